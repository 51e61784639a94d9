#include "util/Log.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/LogicClock.h"
#include "platform/AppendFile.h"
#include "platform/LocalTime.h"
#include "util/WholeFile.h"

#include <Kobaltrix/KXApplication.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <ctime>

namespace {
// One message as it goes out. The parts have the sizes of temporary strings, but are none: a game may log
// from where no logic step ever frees them.
struct Message {
    char text[64 + 1024 + 1024];
    std::size_t length;

    void append(const char* part) {
        const std::size_t bytes = std::min(std::strlen(part), sizeof text - length);
        std::memcpy(text + length, part, bytes);
        length += bytes;
    }
};
} // namespace

// The file's buffer and how much of it is taken. It is our own because a message that does not fit would be
// torn in two by the stream, and another process could append in between.
static constinit char buffer[16 * 1024] = {};
static constinit std::size_t buffered = 0;

static std::FILE* openFile(const char* path, bool overwrite) {
    std::FILE* file = _KXOpenToAppend(path, overwrite);
    if (!file)
        return nullptr;
    std::setvbuf(file, buffer, _IOFBF, sizeof buffer);
    buffered = 0;
    return file;
}

static void closeFile() {
    if (_KXLogFP)
        std::fclose(_KXLogFP);
    _KXLogFP = nullptr;
}

/// @param path null for no file.
static void begin(const char* path, bool overwrite) {
    if (!_KXCategories)
        _KXCategories = new _KXCategoryStates;
    closeFile();
    if (path)
        _KXLogFP = openFile(path, overwrite);
    _KXLogInitialized = -1;
}

void KXInitializeLog(const char* fileName, int overwrite) {
    if (fileName && KXExecutablePath)
        begin((std::string(KXExecutablePath) + "/" + fileName).c_str(), overwrite != 0);
    else
        begin(fileName, overwrite != 0);
}

int KXOpenLog(const char* path, int overwrite) {
    begin(path, overwrite != 0);
    if (_KXLogFP)
        return -1;
    if (path) // else whoever made the path has said why there is none
        _KXSetError("The log cannot be opened: %s%s", path, _KXPathFaultText(path).c_str());
    return 0;
}

void KXDeinitializeLog() {
    closeFile();
    delete _KXCategories;
    _KXCategories = nullptr;
    _KXLogInitialized = 0;
}

static bool isEnabled(const char* category) {
    const auto entry = _KXCategories->find(category);
    if (entry != _KXCategories->end())
        return entry->second == -1;
    _KXCategories->emplace(category, 0);
    return false;
}

static void appendTimestamp(Message& message) {
    const std::tm local = _KXLocalTime(_KXTimeOfDay());
    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "[%02d/%02d/%04lld %02d:%02d:%02d]: ", local.tm_mon + 1, local.tm_mday,
                  local.tm_year + 1900LL, local.tm_hour, local.tm_min, local.tm_sec);
    message.append(stamp);
}

static void appendCategory(Message& message, const char* category) {
    char part[1024];
    std::snprintf(part, sizeof part, "%s ", category);
    message.append(part);
}

static void writeOut(const Message& message) {
    if (_KXLogFP) {
        if (message.length > sizeof buffer - buffered) {
            std::fflush(_KXLogFP);
            buffered = 0;
        }
        std::fwrite(message.text, 1, message.length, _KXLogFP);
        buffered += message.length;
    }
    if (_KXLogToSTDOut)
        std::fwrite(message.text, 1, message.length, stdout);
}

void KXLog(const char* category, const char* format, ...) {
    if (!_KXLogInitialized || (category && !isEnabled(category)) || !format)
        return;
    Message message;
    message.length = 0;
    appendTimestamp(message);
    if (category)
        appendCategory(message, category);

    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length > 0)
        message.append(text);
    writeOut(message);
}

void KXLogEnableCategory(const char* category) {
    if (_KXLogInitialized && category)
        (*_KXCategories)[category] = -1;
}

void KXLogDisableCategory(const char* category) {
    if (!_KXLogInitialized || !category)
        return;
    const auto entry = _KXCategories->find(category);
    if (entry != _KXCategories->end())
        _KXCategories->erase(entry);
}

void KXLogSetEnableSTDOut(int on) { _KXLogToSTDOut = on; }
