#pragma once

/// For as long as it lasts, threads that are started get no signals: a game's are for its own threads.
class _KXNoSignals {
public:
    _KXNoSignals();
    ~_KXNoSignals();
    _KXNoSignals(const _KXNoSignals&) = delete;
    _KXNoSignals& operator=(const _KXNoSignals&) = delete;
};
