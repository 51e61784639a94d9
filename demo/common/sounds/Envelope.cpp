#include "Envelope.h"

#include <algorithm>
#include <cmath>

static double smooth(double share) {
    share = std::clamp(share, 0.0, 1.0);
    return share * share * (3 - 2 * share);
}

double Envelope::at(double seconds, double length) const {
    const double fall = std::exp2(-std::max(seconds - attack, 0.0) / halfLife);
    return (sustain + (1 - sustain) * fall) * smooth(seconds / attack) *
           smooth((length + release - seconds) / release);
}
