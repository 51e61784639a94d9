#include "Particles.h"

#include "Style.h"

#include <algorithm>

static constexpr int numberLifetime = 60;

void Particles::burst(KXPoint at, int count, float speed, KXColor color) {
    for (int i = 0; i < count; ++i) {
        const KXPoint way = KXParametricCircle(KXRandomizef(0, 1), 1000, KXZeroPoint);
        const float pace = speed * KXRandomizef(0.3f, 1) / 1000;
        const int lifetime = KXRandomize(20, 45);
        _sparks.push_back({at, {way.x * pace, way.y * pace}, 0.05f, lifetime, lifetime, color});
    }
}

void Particles::ember(KXPoint at) {
    const int lifetime = KXRandomize(30, 70);
    at.x += KXRandomizef(-14, 14);
    _sparks.push_back({at,
                       {KXRandomizef(-0.2f, 0.2f), KXRandomizef(-1.2f, -0.5f)},
                       -0.002f,
                       lifetime,
                       lifetime,
                       KXRandomPercentChance(50) ? Style::gold : Style::rose});
}

void Particles::number(KXPoint at, int points) { _numbers.push_back({at, points, numberLifetime}); }

void Particles::step() {
    for (Spark& spark : _sparks) {
        spark.at = {spark.at.x + spark.velocity.x, spark.at.y + spark.velocity.y};
        spark.velocity.y += spark.fall;
        --spark.left;
    }
    for (Number& number : _numbers) {
        number.at.y -= 0.5f;
        --number.left;
    }
    std::erase_if(_sparks, [](const Spark& spark) { return spark.left <= 0; });
    std::erase_if(_numbers, [](const Number& number) { return number.left <= 0; });
}

void Particles::draw() {
    for (const Spark& spark : _sparks) {
        const float share = static_cast<float>(spark.left) / static_cast<float>(spark.lifetime);
        const float side = share > 0.5f ? 3 : 2;
        KXDrawRectFill({spark.at, {side, side}}, Style::faded(spark.color, share));
    }
    for (const auto& [at, points, left] : _numbers) {
        const float share = static_cast<float>(left) / numberLifetime;
        Style::printCentred(at.x, at.y, 18, Style::faded(points < 0 ? Style::rose : Style::gold, share),
                            KXTempString("%+d", points));
    }
}
