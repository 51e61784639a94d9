#include "Tool.h"

#include "support/Image.h"

// What does not fit is said, and what was there stays.
TEST_F(Tool, SaysThatTheDiskIsFull) {
    folder.write("a.json", R"({"kxsprite": 1})");
    expectFault(kxsprite("make a.json -o /dev/full"), "/dev/full", "cannot be written: No space left");
    folder.write("a.spr", hero);
    expectFault(kxsprite("make a.json -o a.spr", "trap '' XFSZ; ulimit -f 0;"), "a.spr",
                "cannot be written: File too large\n");
    EXPECT_EQ(contentOf(folder / "a.spr"), hero);
    EXPECT_EQ(kxsprite("info --json a.spr > /dev/full").status, 1);
    Image{16, 16, std::vector<Pixel>(256)}.save(folder / "hero.png");
    expectFault(kxsprite("preview a.spr -o /dev/full"), "/dev/full", "No space left on device");
    EXPECT_EQ(kxsprite("make a.json -o /dev/stdout").output, spriteFile({"", 0, 0}));
}
