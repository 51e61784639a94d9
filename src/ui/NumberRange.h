#pragma once

#include <string>

/// The numbers that a user can choose from.
struct _KXNumberRange {
    /// Ends and a step, which is 0 for none. What is no number counts as 0, and numbers further away than a
    /// thousand million million as that; an end below the beginning counts as the beginning.
    static _KXNumberRange of(double from, double to, double step);

    /// The nearest end of a number that lies outside; the beginning of what is no number.
    double within(double number) const;
    /// The nearest of the numbers that are whole steps from the beginning, or of the ends.
    double nearest(double number) const;
    /// The step, or a hundredth of the range where there is none.
    double stepOrShare() const { return step > 0 ? step : (to - from) / 100; }

    double from = 0, to = 100, step = 1;
};

/// A number with so many digits behind its point, whatever the locale.
std::string _KXNumberText(double number, int decimals);

/// A number with as many digits behind its point as it needs, five at most: as it is read aloud.
std::string _KXShortNumberText(double number);

/// Reads a number with a point or a comma as its decimal sign, blanks around it and perhaps a suffix behind
/// it. @return whether the text is one.
bool _KXReadNumber(const char* text, const char* suffix, double& number);
