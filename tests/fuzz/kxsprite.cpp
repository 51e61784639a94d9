// What the tool reads: sprite files as strictly as it does, its own JSON, and what drawing programs export.

#include "Fuzz.h"
#include "tools/kxsprite/AsepriteImport.h"
#include "tools/kxsprite/Json.h"
#include "tools/kxsprite/SpriteFile.h"

static void readJson(const std::string& text) {
    const ParsedJson json(text);
    const Value root = json.root();
    Document document;
    if (isOwnJson(root)) {
        document = documentFromJson(root);
    } else if (isAsepriteJson(root)) {
        std::vector<std::string> notes;
        document = documentFromAseprite(root, {16, "all"}, notes);
    }
    describe(document);
    const ParsedJson again(jsonFromDocument(document));
    require(documentFromJson(again.root()) == document, "a document comes back from its own JSON");
}

void fuzz(FuzzBytes bytes) {
    const std::string content = bytes.rest();
    for (const StrictReading& reading :
         {readStrictly(content, [](const std::string&) { return std::nullopt; }),
          readStrictly(content, [](const std::string&) {
              return SheetSize{64, 64};
          })})
        require(reading.readable || !reading.faults.empty(), "what cannot be read has a fault");
    try {
        readJson(content);
    } catch (const Fault& fault) {
        require(*fault.what(), "a fault says what it is");
    }
}
