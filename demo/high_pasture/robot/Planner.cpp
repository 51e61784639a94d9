#include "Planner.h"

#include "Feel.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <queue>
#include <string_view>
#include <tuple>
#include <unordered_set>

namespace {
constexpr int stepsOfAct = 6, mostTried = 200000;

constexpr std::string_view acts = "rR.!lL";

bool jumps(char act) { return act == 'R' || act == 'L' || act == '!'; }

struct Place {
    World world;
    int before; ///< The number of the place that it was reached from; -1 for none.
    char act;   ///< By what.
};

Input inputOf(char act, char before, int step) {
    const float walk = act == 'r' || act == 'R' ? 1.0f : act == 'l' || act == 'L' ? -1.0f : 0.0f;
    return {walk, jumps(act) && !jumps(before) && step == 0, jumps(act), false};
}

// What counts as the same place: near each other, at about the same speed and time, as baskets go.
std::size_t keyOf(const World& world, bool holds) {
    const KXPoint at = world.kid().body.origin, speed = world.speed();
    std::size_t key = 0;
    for (const float part :
         {at.x / 8, at.y / 8, speed.x, speed.y / 1.5f, static_cast<float>(world.steps()) / 40})
        key = key * 8191 + static_cast<std::size_t>(static_cast<long>(std::floor(part)) + 64);
    return key * 4 + world.stands() * 2 + holds;
}

// How promising a place is: near home, and not too late. Waiting for a basket must not cost much.
float promiseOf(const World& world) {
    const KXPoint way = KXRectCentre(world.level().gate) - KXRectCentre(world.kid().body);
    return -std::abs(way.x) / Feel::runSpeed - 0.2f * static_cast<float>(world.steps());
}
} // namespace

std::string findWay(const World& from) {
    std::deque<Place> places = {{from, -1, '.'}};
    std::priority_queue<std::tuple<float, int>> open;
    open.emplace(0.0f, 0);
    std::unordered_set<std::size_t> known;
    int home = -1;
    while (home < 0 && !open.empty() && places.size() < mostTried) {
        const int number = std::get<1>(open.top());
        const Place& place = places[static_cast<std::size_t>(number)];
        open.pop();
        for (const char act : acts) {
            Place next = {place.world, number, act};
            for (int i = 0; i < stepsOfAct && !next.world.isHome(); ++i)
                next.world.step(inputOf(act, place.act, i));
            if (next.world.tumbled() > from.tumbled() || !known.insert(keyOf(next.world, jumps(act))).second)
                continue;
            const int found = static_cast<int>(places.size());
            open.emplace(promiseOf(next.world), found);
            if (next.world.isHome())
                home = found;
            places.push_back(std::move(next));
        }
    }
    std::string way;
    for (int at = home; at > 0; at = places[static_cast<std::size_t>(at)].before)
        way += places[static_cast<std::size_t>(at)].act;
    std::ranges::reverse(way);
    return way;
}

std::vector<Input> inputsOf(const std::string& way) {
    std::vector<Input> inputs;
    char before = '.';
    for (const char act : way) {
        for (int i = 0; i < stepsOfAct; ++i)
            inputs.push_back(inputOf(act, before, i));
        before = act;
    }
    return inputs;
}
