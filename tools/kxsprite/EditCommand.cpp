#include "Commands.h"
#include "Report.h"
#include "studio/Studio.h"

static bool edit(const Arguments& arguments) {
    StudioOptions options;
    if (!arguments.files.empty())
        options.file = arguments.files.front();
    options.record = arguments.text("--record");
    options.replay = arguments.text("--replay");
    options.screenshot = arguments.text("--screenshot");
    options.settings = arguments.text("--settings");
    return tryWith(options.file.empty() ? "edit" : options.file, [&] {
        runStudio(options);
        return true;
    });
}

const Command editCommand = {
    "edit",
    "[FILE.spr | SHEET.png | FILE.json] [--settings FOLDER] [--record FILE]\n"
    "[FILE] --replay FILE [--screenshot OUT.png]",
    "edit        open the studio: cut frames from a sheet, give them their durations, draw boxes\n"
    "  --settings FOLDER  where the studio keeps its settings and unsaved work\n"
    "  --record FILE      record what is done in it\n"
    "  --replay FILE      do it again, without a display where there is none; begins without settings\n"
    "  --screenshot OUT   keep the last picture, without a replay one of the sprite just opened",
    Command::Files::AtMostOne,
    {{"--settings", Option::Kind::Text},
     {"--record", Option::Kind::Text},
     {"--replay", Option::Kind::Text},
     {"--screenshot", Option::Kind::Text}},
    edit};
