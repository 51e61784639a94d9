#pragma once

#include <atomic>

/// What std::mutex is, but constant from the start on every system: nothing has to be made before main().
class _KXLock {
public:
    constexpr _KXLock() = default;

    void lock() {
        while (_isTaken.exchange(true, std::memory_order_acquire))
            _isTaken.wait(true, std::memory_order_relaxed);
    }
    void unlock() {
        _isTaken.store(false, std::memory_order_release);
        _isTaken.notify_one();
    }

private:
    std::atomic<bool> _isTaken = false;
};
