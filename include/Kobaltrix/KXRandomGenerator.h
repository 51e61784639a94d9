#pragma once

#include <Kobaltrix/KXTypes.h>

#include <iterator>
#include <limits.h>
#include <stdint.h>
#include <utility>

/// @file
/// Chance that a game owns: a generator whose numbers are the same on every system, and that can be seeded,
/// copied, saved and taken back. Nothing here allocates or fails. Truth values are ints: -1 for yes, 0 for
/// no.
///
///     KXRandomGenerator dice(KXRandomSeed());
///     const int eyes = dice.range(1, 6);
///
/// The calls of KXRandom.h draw from the one `rand()` of the whole program instead, whose numbers each system
/// makes in its own way.

/// Where a KXRandomGenerator stands: four numbers of 32 bits, to be stored in whatever form.
struct KXRandomState {
    uint32_t a; ///< The first.
    uint32_t b; ///< The second.
    uint32_t c; ///< The third.
    uint32_t d; ///< The fourth.
};

/// A seed drawn from `rand()`, so another one at each start: KXInit() seeds that with the time of day. After
/// `srand()` it is repeatable, and with it all that a game draws. Before KXInit() it is always the same.
KX_API uint64_t KXRandomSeed();

/// A generator of random numbers: xoshiro128++ 1.0 by David Blackman and Sebastiano Vigna, with the shifts
/// and rotations (7, 9, 11) that they published. It repeats itself after 2^128 - 1 numbers, and is no use for
/// secrets. A plain value: a copy takes over the state and goes on independently. Usable from any thread, one
/// generator by one thread at a time.
///
/// All results follow from whole numbers and are the same on every system. Each takes one number(), whole
/// ones of a range seldom another, so that all are equally likely. Arguments of one function call are worked
/// out in an order that differs between compilers: draw into variables first, or in braces.
class KX_API KXRandomGenerator {
public:
    /// Begins as seed() does.
    explicit KXRandomGenerator(uint64_t seed = 0);

    /// Begins anew. Any number is as good as any other; splitmix64 (by Sebastiano Vigna) spreads it over the
    /// state, so seeds that are neighbours have nothing in common. One seed always gives the same numbers.
    void seed(uint64_t seed);
    /// Where it stands, to go on from there with setState().
    KXRandomState state() const;
    /// Goes on from where a generator stood. Four zeros are no state, and begin like the seed 0.
    void setState(const KXRandomState& state);

    /// 32 bits, each as likely to be set as not.
    uint32_t number();
    /// A whole number from one bound to the other, both included, all exactly equally likely. Any two ints
    /// are a range, the widest one too, and the greater one may come first.
    int range(int lowest, int highest);
    /// A number from one bound to the other, in 2^24 steps of equal size, rounded; the second bound itself
    /// comes up only where a step is rounded to it. The greater one may come first. What is infinite counts
    /// as the largest float; 0 if either is not a number. `range(0, 1)` of two ints gives whole numbers, and
    /// of an int and a float it does not compile.
    float range(float lowest, float highest);
    /// At least 0 and less than 1, in steps of 2^-24.
    float fraction();
    /// -1 with a probability from 0 (never) to 1 (always), else 0. Less than 0 and not-a-number are never,
    /// more than 1 is always.
    int chance(float probability);
    /// A point within @a area: first x is drawn, then y, each like a float of range().
    KXPoint pointIn(const KXRect& area);
    /// A place in an array of @a count items, from 0 on, all equally likely. -1, and nothing drawn, if there
    /// are none.
    int index(int count);

    /// One of @a count items, all equally likely. Null, and nothing drawn, if there are none or @a items is
    /// null.
    template<class T>
    T* pick(T* items, int count) {
        return items && count > 0 ? items + index(count) : nullptr;
    }
    /// One item of an array, a std::vector or the like: a pointer to it, null if there are none. Of more than
    /// INT_MAX items it is one of the first.
    template<class Items>
    auto pick(Items& items) -> decltype(&*std::begin(items)) {
        const int at = index(_count(items));
        return at < 0 ? nullptr : &std::begin(items)[at];
    }

    /// Puts @a count items into an order of which all are equally likely. Null and no items do nothing.
    template<class T>
    void shuffle(T* items, int count) {
        for (int left = items ? count : 0; left > 1; --left) {
            using std::swap;
            swap(items[left - 1], items[index(left)]);
        }
    }
    /// Shuffles an array, a std::vector or the like; of more than INT_MAX items the first.
    template<class Items>
    void shuffle(Items& items) {
        for (int left = _count(items); left > 1; --left) {
            using std::swap;
            swap(std::begin(items)[left - 1], std::begin(items)[index(left)]);
        }
    }

private:
    KXRandomState _state;

    template<class Items>
    static int _count(Items& items) {
        const auto count = std::end(items) - std::begin(items);
        return count < INT_MAX ? static_cast<int>(count) : INT_MAX;
    }
};
