#pragma once

#include <cstddef>

/// For as long as it lasts, the platform and its decoders get at most so many bytes on this thread. What is
/// asked for beyond them fails, as where memory has run out: so a small file that claims to be a huge
/// picture, or decodes to hours of sound, costs no more than its budget, whatever its format. What is freed
/// meanwhile still counts. Budgets do not nest.
class _KXMemoryBudget {
public:
    explicit _KXMemoryBudget(std::size_t bytes);
    ~_KXMemoryBudget();
    _KXMemoryBudget(const _KXMemoryBudget&) = delete;
    _KXMemoryBudget& operator=(const _KXMemoryBudget&) = delete;

    /// Whether more was asked for than there was.
    bool exceeded() const { return _exceeded; }

private:
    friend struct _KXBudgetedMemory;

    std::size_t _left;
    bool _exceeded = false;
};
