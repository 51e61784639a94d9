#include "platform/LocalTime.h"

std::tm _KXLocalTime(std::time_t time) {
    std::tm local = {};
    return localtime_s(&local, &time) == 0 ? local : std::tm{};
}
