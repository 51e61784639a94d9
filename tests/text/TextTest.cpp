#include "text/TextTest.h"

#include <algorithm>
#include <fstream>

const char* testFont() {
    static constexpr const char* path = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    if (!std::ifstream(path))
        ADD_FAILURE() << path << " is missing: install Debian's package fonts-dejavu-core";
    return path;
}

std::unique_ptr<KXWindow> TextTest::makeWindow() {
    auto window = std::make_unique<KXWindow>("Text", KXSize{320, 64});
    window->setRenderContext();
    return window;
}

TextTest::TextTest() {
    window = makeWindow();
    testing::internal::CaptureStderr();
}

TextTest::~TextTest() { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

Image TextTest::draw(const std::function<void()>& draw, KXWindow* target) {
    fill({0, 0, 0, 1});
    draw();
    return Image::of(target ? *target : *window);
}

Ink TextTest::ink(const std::function<void()>& draw) {
    const Image image = this->draw(draw);
    Ink ink = {image.width, image.height, 0, 0};
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            if (image.at(x, y) != Pixel{0, 0, 0, 255})
                ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                       std::max(ink.bottom, y + 1)};
    return ink.right == 0 ? Ink{} : ink;
}
