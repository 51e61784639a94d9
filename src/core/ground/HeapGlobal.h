#pragma once

#include <utility>

/// A global value that is made on the heap when it is first used, and freed where that is asked for only. A
/// static object of the game may need it while the process ends, later than a static object of the library
/// would live.
template<class Value>
class _KXHeapGlobal {
public:
    constexpr _KXHeapGlobal() = default;
    _KXHeapGlobal(const _KXHeapGlobal&) = delete;
    _KXHeapGlobal& operator=(const _KXHeapGlobal&) = delete;

    /// The value, made if there is none.
    Value& get() {
        if (!_value)
            _value = new Value;
        return *_value;
    }
    /// The value, null if there is none.
    Value* find() const { return _value; }
    void free() { delete std::exchange(_value, nullptr); }

private:
    Value* _value = nullptr;
};
