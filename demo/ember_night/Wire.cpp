#include "Wire.h"

static constexpr float precision = 16; // parts of a pixel

static void writeFloat(KXNetworkBuffer& buffer, float value) {
    buffer.appendLong(static_cast<long>(value * precision));
}
static float readFloat(KXNetworkBuffer& buffer) { return static_cast<float>(buffer.readLong()) / precision; }

static void writePoint(KXNetworkBuffer& buffer, KXPoint point) {
    writeFloat(buffer, point.x);
    writeFloat(buffer, point.y);
}
static KXPoint readPoint(KXNetworkBuffer& buffer) {
    const float x = readFloat(buffer);
    return {x, readFloat(buffer)};
}

// A number within bounds.
static int readInt(KXNetworkBuffer& buffer, int low, int high) {
    int value = static_cast<int>(buffer.readLong());
    KXClampi(&value, low, high);
    return value;
}

// The game and how it talks; another way of talking gets another number.
static constexpr long greeting[] = {0x454D4252, 1};

void writeGreeting(KXNetworkBuffer& buffer) {
    for (const long number : greeting)
        buffer.appendLong(number);
}

bool isGreeting(KXNetworkBuffer& buffer) {
    for (const long number : greeting)
        if (buffer.readLong() != number)
            return false;
    return true;
}

void writeInput(KXNetworkBuffer& buffer, const Input& input) {
    buffer.appendLong(input.left | input.right << 1 | input.up << 2 | input.down << 3 | input.hop << 4);
}

Input readInput(KXNetworkBuffer& buffer) {
    const long bits = buffer.readLong();
    return {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0, (bits & 16) != 0};
}

void writePicture(KXNetworkBuffer& buffer, const Picture& picture) {
    for (const Picture::Player& player : picture.players) {
        buffer.appendLong(player.present);
        writePoint(buffer, player.at);
        buffer.appendLong(player.facing);
        buffer.appendLong(player.walking);
        writeFloat(buffer, player.height);
        buffer.appendLong(player.hurt);
        buffer.appendLong(player.carried);
    }
    buffer.appendLong(static_cast<long>(picture.moths.size()));
    for (const Picture::Moth& moth : picture.moths) {
        writePoint(buffer, moth.at);
        writeFloat(buffer, moth.light);
    }
    buffer.appendLong(static_cast<long>(picture.bats.size()));
    for (const Picture::Bat& bat : picture.bats) {
        writePoint(buffer, bat.at);
        buffer.appendLong(bat.flees);
    }
    buffer.appendLong(static_cast<long>(picture.events.size()));
    for (const Event& event : picture.events) {
        buffer.appendLong(event.kind);
        writePoint(buffer, event.at);
        buffer.appendLong(event.amount);
    }
    writeFloat(buffer, picture.fuel);
    buffer.appendLong(static_cast<long>(picture.nightLeft * 10000));
    buffer.appendLong(picture.score);
    buffer.appendLong(picture.phase);
}

Picture readPicture(KXNetworkBuffer& buffer) {
    constexpr int most = 64;
    Picture picture;
    for (Picture::Player& player : picture.players) {
        player.present = buffer.readLong() != 0;
        player.at = readPoint(buffer);
        player.facing = readInt(buffer, 0, 3) == KXDirectionLeft ? KXDirectionLeft : KXDirectionRight;
        player.walking = buffer.readLong() != 0;
        player.height = readFloat(buffer);
        player.hurt = readInt(buffer, 0, 1000);
        player.carried = readInt(buffer, 0, World::mostCarried);
    }
    for (int i = readInt(buffer, 0, most); i > 0; --i) {
        const KXPoint at = readPoint(buffer);
        picture.moths.push_back({at, readFloat(buffer)});
    }
    for (int i = readInt(buffer, 0, most); i > 0; --i) {
        const KXPoint at = readPoint(buffer);
        picture.bats.push_back({at, buffer.readLong() != 0});
    }
    for (int i = readInt(buffer, 0, most); i > 0; --i) {
        const auto kind = static_cast<Event::Kind>(readInt(buffer, 0, Event::Dark));
        const KXPoint at = readPoint(buffer);
        picture.events.push_back({kind, at, readInt(buffer, -100000, 100000)});
    }
    picture.fuel = readFloat(buffer);
    picture.nightLeft = static_cast<float>(buffer.readLong()) / 10000;
    picture.score = readInt(buffer, 0, 1'000'000);
    picture.phase = static_cast<Picture::Phase>(readInt(buffer, 0, Picture::Dark));
    return picture;
}
