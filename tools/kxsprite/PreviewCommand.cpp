#include "Commands.h"
#include "Preview.h"
#include "Report.h"

static bool preview(const Arguments& arguments) {
    const std::string& path = arguments.files.front();
    return tryWith(path, [&] {
        previewSprite(path, {arguments.text("-o"), arguments.text("--animation"),
                             arguments.number("--scale", 1), arguments.number("--step-ms", 16)});
        return true;
    });
}

const Command previewCommand = {
    "preview",
    "FILE.spr -o OUT.png [--animation NAME] [--scale N]\n"
    "FILE.spr -o OUT.gif [--animation NAME] [--scale N] [--step-ms N]",
    "preview     draw every animation as a row of frames with the boxes outlined, without a display;\n"
    "            the environment variable KXSPRITE_FONT names the font file of the labels\n"
    "            or, where OUT ends with .gif, one animation as it moves\n"
    "  --animation NAME\n"
    "              that animation alone; a GIF of a sprite that has others needs it\n"
    "  --scale N   N pixels for each pixel of the sheet, 1 to 16 (1)\n"
    "  --step-ms N as for make",
    Command::Files::One,
    {outputOption,
     {"--animation", Option::Kind::Text},
     {"--scale", Option::Kind::Number, 1, 16},
     {"--step-ms", Option::Kind::Number, 1, 1000}},
    preview};
