#include "platform/LocalTime.h"

std::tm _KXLocalTime(std::time_t time) {
    std::tm local = {};
    return localtime_r(&time, &local) ? local : std::tm{};
}
