#include <Kobaltrix/KXTypes.h>

constinit const KXPoint KXZeroPoint = {0, 0};
constinit const KXSize KXZeroSize = {0, 0};
constinit const KXRect KXZeroRect = {{0, 0}, {0, 0}};
constinit const KXColor KXRedColor = {1, 0, 0, 1};
constinit const KXColor KXGreenColor = {0, 1, 0, 1};
constinit const KXColor KXBlueColor = {0, 0, 1, 1};

KXColor KXMakeColor(float r, float g, float b, float a) { return {r, g, b, a}; }

KXColor KXMakeColori(int r, int g, int b, int a) {
    auto channel = [](int value) { return static_cast<float>(static_cast<float>(value) / 255.0); };
    return {channel(r), channel(g), channel(b), channel(a)};
}

float KXMinf(float a, float b) { return a < b ? a : b; }
int KXMini(int a, int b) { return a < b ? a : b; }
float KXMaxf(float a, float b) { return a > b ? a : b; }
int KXMaxi(int a, int b) { return a > b ? a : b; }

void KXClampf(float* v, float lo, float hi) {
    if (!v)
        return;
    if (*v < lo)
        *v = lo;
    else if (!(*v <= hi)) // written so that not-a-number ends at the upper bound
        *v = hi;
}

void KXClampi(int* v, int lo, int hi) {
    if (!v)
        return;
    if (*v < lo)
        *v = lo;
    else if (*v > hi)
        *v = hi;
}

int KXNearestPowerOfTwo(int n) {
    int power = 1;
    while (power < n && power < (1 << 30))
        power *= 2;
    return power;
}
