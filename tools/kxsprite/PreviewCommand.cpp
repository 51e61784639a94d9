#include "Commands.h"
#include "Preview.h"
#include "Report.h"

static bool preview(const Arguments& arguments) {
    const std::string& path = arguments.files.front();
    return tryWith(path, [&] {
        previewSprite(path, arguments.text("-o"));
        return true;
    });
}

const Command previewCommand = {
    "preview",
    "FILE.spr -o OUT.png",
    "preview     draw every animation as a row of frames with the boxes outlined, without a display;\n"
    "            the environment variable KXSPRITE_FONT names the font file of the labels",
    Command::Files::One,
    {outputOption},
    preview};
