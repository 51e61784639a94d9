#include "KobaltrixTest/KXTestClock.h"

#include <Kobaltrix/KXClock.h>

static KXTestClock* living = nullptr;

static KXTestClock& of(void* data) { return *static_cast<KXTestClock*>(data); }

KXTestClock::KXTestClock(uint64_t milliseconds, int64_t timeOfDay)
    : _now(milliseconds * 1'000'000), _dayBegan(_now), _day(timeOfDay) {
    const KXClock clock = {
        [](void* data) { return of(data).nanoseconds(); }, [](void* data) { return of(data).timeOfDay(); },
        [](void* data, uint64_t nanoseconds) { of(data).advanceNanoseconds(nanoseconds); }, this};
    KXSetClock(&clock);
    living = this;
}

KXTestClock::~KXTestClock() {
    KXSetClock(nullptr);
    living = nullptr;
}

KXTestClock* KXTestClock::current() { return living; }

void KXTestClock::advance(uint64_t milliseconds) { advanceNanoseconds(milliseconds * 1'000'000); }
void KXTestClock::advanceNanoseconds(uint64_t nanoseconds) { _now += nanoseconds; }

int64_t KXTestClock::timeOfDay() const {
    return _day + static_cast<int64_t>((_now - _dayBegan) / 1'000'000'000);
}

void KXTestClock::setTimeOfDay(int64_t seconds) {
    _dayBegan = _now;
    _day = seconds;
}
