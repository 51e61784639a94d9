// A line of text under any keys: always valid, its cursor always between two characters.

#include "Fuzz.h"
#include "text/TextEdit.h"

static void check(const _KXTextEdit& edit) {
    std::size_t characters = 0;
    bool cursor = false, anchor = false;
    for (std::size_t at = 0;; at = edit.after(at), ++characters) {
        cursor |= at == edit.cursor();
        anchor |= at == edit.anchor();
        if (at == edit.text().size())
            break;
        require(edit.after(at) > at && edit.before(edit.after(at)) == at, "characters follow each other");
    }
    require(cursor && anchor, "cursor and anchor lie between two characters");
    require(characters == edit.length() && characters <= edit.maximumLength(), "the characters are counted");
}

// All of it, or one change; what is made again is what was taken back.
static void takeBackAndMakeAgain(_KXTextEdit& edit, bool all) {
    const std::string text = edit.text();
    int times = 0;
    while (edit.undo()) {
        check(edit);
        ++times;
        if (!all)
            break;
    }
    for (int again = times; again > 0; --again)
        require(edit.redo(), "what was taken back can be made again");
    require(edit.text() == text, "and is the same");
    if (times)
        edit.undo();
}

void fuzz(FuzzBytes bytes) {
    _KXTextEdit edit;
    while (!bytes.atEnd()) {
        const std::uint8_t act = bytes.byte();
        const auto step = static_cast<_KXCursorStep>((act >> 4) % 6);
        switch (act & 7) {
        case 0:
            if (act & 8)
                edit.type(bytes.text().c_str());
            else
                edit.insert(bytes.text().c_str());
            break;
        case 1:
            edit.setText(bytes.text().c_str());
            break;
        case 2:
            edit.erase(step);
            break;
        case 3:
            edit.move(step, act & 8);
            break;
        case 4:
            edit.setMaximumLength(bytes.number<std::uint16_t>());
            break;
        case 5:
            edit.select(bytes.byte(), bytes.byte());
            break;
        case 6:
            edit.selectWords(bytes.byte(), bytes.byte());
            break;
        default:
            if (act & 8)
                takeBackAndMakeAgain(edit, act & 128);
            else
                edit.setSecret(act & 16);
            require(edit.positionOfCharacter(edit.characterAt(edit.cursor())) == edit.cursor(),
                    "places and characters belong together");
        }
        check(edit);
    }
}
