// Files of actions and of the layouts of pads.

#include "Fuzz.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXActions.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXPads.h>
#include <Kobaltrix/KXWindow.h>

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    const std::string content = bytes.rest();
    const char* const path = fuzzFile(content);
    KXLoadPadMappings(path);
    KXActions actions, again;
    if (!actions.load(path))
        return require(actions.count() == 0 && *KXError(),
                       "a file that is refused says why, and changes nothing");
    require(actions.save(path), "what was loaded is saved");
    const std::string saved = contentOf(path);
    require(again.load(path) && again.save(path), "and loaded again");
    require(contentOf(path) == saved, "it is the same");
}
