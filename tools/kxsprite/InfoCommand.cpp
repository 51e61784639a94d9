#include "Commands.h"
#include "Json.h"
#include "Report.h"
#include "SpriteIO.h"

static bool info(const Arguments& arguments) {
    const std::string& path = arguments.files.front();
    return tryWith(path, [&] {
        const Document document = loadDocument(path);
        const std::string text = arguments.has("--json") ? jsonFromDocument(document) : describe(document);
        if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
            throw Fault("the output cannot be written");
        return true;
    });
}

const Command infoCommand = {"info",
                             "[--json] FILE.spr",
                             "info        print the texture, the animations and the boxes of a sprite file\n"
                             "  --json      as JSON that make takes back unchanged",
                             Command::Files::One,
                             {{"--json"}},
                             info};
