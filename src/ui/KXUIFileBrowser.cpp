#include "ui/KXUIFileBrowser.h"

#include "util/Utf8.h"

#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <new>
#include <utility>

namespace {
std::string quoted(const std::string& name) { return "\"" + name + "\""; }

// What a row shows: the name, with question marks for bytes that are no character and for control characters.
std::string rowFor(const _KXFolderListing::Entry& entry) {
    std::string row = _KXLegibleText(entry.name.c_str()).get();
    std::replace_if(
        row.begin(), row.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; },
        '?');
    return entry.isFolder ? row + "/" : row;
}

// A path is handed out as a temporary string, or where that would cut it as the browser's own text.
const char* textOut(const std::string& text) {
    constexpr std::size_t longest = 1023;
    return text.size() <= longest ? KXTempString("%s", text.c_str()) : text.c_str();
}
} // namespace

KXUIFileBrowser::KXUIFileBrowser() : _state(std::make_unique<State>(*this)) {}

KXUIFileBrowser::~KXUIFileBrowser() = default;

void KXUIFileBrowser::show(KXUIFileBrowserMode mode, const char* folder) { show(mode, folder, nullptr); }

void KXUIFileBrowser::show(KXUIFileBrowserMode mode, const char* folder, const char* name) {
    State& state = *_state;
    const std::string initial = name ? name : ""; // copied first: it may be this browser's own path()
    const std::string path = _KXAbsolutePath(folder);
    state.isShown = true;
    state.saves = mode != KXUIFileBrowserModeOpen;
    state.hasChosen = state.cancelled = false;
    state.chosen.clear();
    state.skipStep();
    state.caption();
    state.enter(path, initial);
    state.putName(initial);
    if (!state.saves) {
        state.list.setFocus(-1);
        return;
    }
    state.name.focus();
    state.name.selectAll();
    // Typing replaces the name but not its extension.
    const std::string text = state.name.text();
    const std::size_t dot = text.rfind('.');
    if (dot != 0 && dot != std::string::npos)
        state.name.select(0, static_cast<int>(_KXCountCharacters(text.substr(0, dot))));
}

void KXUIFileBrowser::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
    _state->list.setWindowID(id);
    _state->name.setWindowID(id);
    for (KXUIButton* button : _state->buttons)
        button->setWindowID(id);
}

void KXUIFileBrowser::hide() {
    _state->isShown = false;
    _state->list.setFocus(0);
    _state->name.unfocus();
    _state->dropQuestion();
}

int KXUIFileBrowser::isShown() const { return _state->isShown ? -1 : 0; }

void KXUIFileBrowser::setExtensions(const char* extensions) {
    _state->filter.extensions = _KXFileFilter::extensionsIn(extensions);
    refresh();
}

void KXUIFileBrowser::setShowsHiddenFiles(int shows) {
    _state->filter.showsHidden = shows;
    _state->hidden.setState(shows ? KXUIToggleButtonStateOn : KXUIToggleButtonStateOff);
    refresh();
}

int KXUIFileBrowser::showsHiddenFiles() const { return _state->filter.showsHidden ? -1 : 0; }

void KXUIFileBrowser::setFolder(const char* folder) { _state->enter(_KXAbsolutePath(folder), ""); }

void KXUIFileBrowser::refresh() {
    if (!_state->isShown)
        return;
    const int row = _state->list.selectedIndex();
    _state->read(row == -1 ? "" : std::string(_state->entries[row].name));
}

const char* KXUIFileBrowser::folder() const { return textOut(_state->folder); }

const char* KXUIFileBrowser::message() const { return KXTempString("%s", _state->message.c_str()); }

const char* KXUIFileBrowser::path() const { return _state->hasChosen ? textOut(_state->chosen) : nullptr; }

// What there is to say about a folder; empty for nothing.
static std::string messageFor(const _KXFolderListing& listing) {
    if (listing.error == ENOENT || listing.error == ENOTDIR)
        return "There is no such folder.";
    if (listing.error)
        return std::string("This folder cannot be read: ") + std::strerror(listing.error);
    if (!listing.entries.empty())
        return "";
    return listing.hasOthers ? "Nothing in this folder is listed." : "This folder is empty.";
}

/// Lists the folder, with the entry of a name selected if there is one. @return 0, or the system's error.
int KXUIFileBrowser::State::read(const std::string& select) {
    _KXFolderListing listing = _KXReadFolder(folder, filter);
    std::string aboutIt = messageFor(listing);
    std::vector<std::string> rows;
    rows.reserve(listing.entries.size());
    for (const _KXFolderListing::Entry& entry : listing.entries)
        rows.push_back(rowFor(entry));
    dropQuestion(); // the last that may lack memory
    list._setRows(std::move(rows));
    entries = std::move(listing.entries);
    message = std::move(aboutIt);
    const auto found = select.empty()
                           ? entries.end()
                           : std::find_if(entries.begin(), entries.end(),
                                          [&](const _KXFolderListing::Entry& e) { return e.name == select; });
    if (found != entries.end())
        list.setSelectedIndex(static_cast<int>(found - entries.begin()));
    return listing.error;
}

void KXUIFileBrowser::State::enter(const std::string& path, const std::string& select) {
    std::string before = path;
    folder.swap(before);
    try {
        if (isShown)
            read(select);
    } catch (const std::bad_alloc&) {
        folder.swap(before);
        throw;
    }
    if (!saves)
        putName(""); // it named a file of the folder before
}

void KXUIFileBrowser::State::goUp() {
    const std::string from = _KXLastPart(folder);
    if (!from.empty())
        enter(_KXParentOf(folder), from);
}

/// Writes a name that was not typed. Where its bytes are no text the line shows something else.
void KXUIFileBrowser::State::putName(const std::string& bytes) {
    name.setText(bytes.c_str());
    picked = bytes;
    pickedShown = name.text();
}

/// The bytes that the line stands for.
std::string KXUIFileBrowser::State::nameMeant() const {
    const std::string text = name.text();
    return text == pickedShown ? picked : text;
}

void KXUIFileBrowser::State::selected(int row) {
    dropQuestion();
    message.clear();
    const _KXFolderListing::Entry& entry = entries[row];
    if (entry.name != _KXLegibleText(entry.name.c_str()).get())
        message = "This name has bytes that are no text; they are shown as question marks.";
    if (!entry.isFolder)
        putName(entry.name);
    else if (!saves)
        putName(""); // the button is to enter the folder; a name to save under goes along into it
}

void KXUIFileBrowser::State::dropQuestion() {
    if (asked.empty())
        return;
    asked.clear();
    message.clear();
    caption();
}

/// The button, Return in the line, or the activation of a file.
void KXUIFileBrowser::State::pressed() {
    const std::string typed = nameMeant();
    const int row = list.selectedIndex();
    const std::string path = _KXPathIn(folder, typed);
    if (typed.empty() && row != -1 && entries[row].isFolder) {
        const std::string inside = _KXPathIn(folder, entries[row].name);
        enter(inside, "");
    } else if (typed.empty()) {
        message = saves ? "Type a name for the file." : "Select a file or type its name.";
    } else if (_KXKindOf(path) == _KXPathKind::Folder) {
        putName("");
        enter(_KXAbsolutePath(path.c_str()), "");
    } else if (typed.ends_with('/')) {
        message = "There is no folder " + quoted(typed) + ".";
    } else if (saves) {
        save(path);
    } else {
        open(path);
    }
}

// Why there is nothing at a path that was asked for just before.
static std::string whyNot(const std::string& name, int error) {
    if (error == ENOENT || error == ENOTDIR)
        return "There is no file " + quoted(name) + ".";
    return std::string(std::strerror(error)) + ": " + quoted(name);
}

void KXUIFileBrowser::State::open(const std::string& path) {
    const bool exists = _KXKindOf(path) != _KXPathKind::Nothing;
    const int error = errno;
    if (exists) {
        choose(path);
        return;
    }
    // What was listed is gone; read() tells whether its folder is, too.
    if (list.selectedIndex() == -1 || read("") == 0)
        message = whyNot(nameMeant(), error);
}

// Whether there is something in a name beside blanks, dots and an extension.
static bool namesSomething(const std::string& name, const _KXFileFilter& filter) {
    const std::size_t dot = name.rfind('.');
    const bool hasExtension = dot != std::string::npos &&
                              (dot > 0 || (!filter.extensions.empty() && filter.matchesExtension(name)));
    return name.substr(0, hasExtension ? dot : name.npos).find_first_not_of(" .") != std::string::npos;
}

void KXUIFileBrowser::State::save(std::string path) {
    if (!namesSomething(_KXLastPart(path), filter)) {
        message = "A name needs more than blanks and dots.";
        return;
    }
    if (!filter.matchesExtension(_KXLastPart(path))) {
        path.erase(path.find_last_not_of('.') + 1); // "mine." is "mine.txt"
        path += "." + filter.extensions.front();
    }
    const std::string parent = _KXParentOf(path);
    const _KXPathKind kind = _KXKindOf(path);
    const int error = errno;
    if (kind == _KXPathKind::Folder)
        message = "There is a folder " + quoted(_KXLastPart(path)) + ".";
    else if (kind == _KXPathKind::Nothing && _KXKindOf(parent) != _KXPathKind::Folder)
        message = "There is no folder " + quoted(parent) + ".";
    else if (kind == _KXPathKind::Nothing && error != ENOENT)
        message = whyNot(_KXLastPart(path), error);
    else if (kind == _KXPathKind::Nothing || asked == path)
        choose(path);
    else {
        asked = path;
        message = quoted(_KXLastPart(path)) + " is there already. Replace it?";
        caption();
    }
}

void KXUIFileBrowser::State::choose(const std::string& path) {
    chosen = path;
    hasChosen = true;
}

/// What made the game show the browser is not for it.
void KXUIFileBrowser::State::skipStep() {
    pressedButton = nullptr;
    for (_KXFocus* part : std::initializer_list<_KXFocus*>{this, &list._focus(), &name._focus()})
        part->skipUnheard();
    for (KXUIButton* button : buttons) { // nor what hide() cut short
        button->setSize(KXZeroSize);
        button->_KXUIWidget::clicked(KXMouseLeft);
    }
}

// Keys that neither list nor line keeps for itself.
bool KXUIFileBrowser::State::keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    if (modifiers.alt)
        return false;
    if (key.key == KXKeyTab)
        name.isFocused() ? list.setFocus(-1) : name.focus();
    else if (key.key == KXKeyBackspace && list.hasFocus())
        goUp();
    else if (key.key == KXKeyEscape)
        cancel();
    else if ((key.key == KXKeyReturn || key.key == KXKeyPadEnter) && list.hasFocus() &&
             list.selectedIndex() == -1)
        pressed(); // what stands in the line
    else
        return false;
    return true;
}

void KXUIFileBrowser::State::cancel() {
    cancelled = asked.empty();
    dropQuestion();
}

// Buttons are clicked in the order of what else happens, also within a step.
void KXUIFileBrowser::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (event.button != KXMouseLeft || modifiers.control ||
        (event.type != KXInputEventMouseDown && event.type != KXInputEventMouseUp))
        return;
    const auto under = std::ranges::find_if(buttons, [](KXUIButton* button) { return button->mouseOver(); });
    const KXUIButton* const button = under == std::end(buttons) ? nullptr : *under;
    if (event.type == KXInputEventMouseDown)
        pressedButton = button;
    else if (const KXUIButton* pressed = std::exchange(pressedButton, nullptr); pressed && pressed == button)
        click(*pressed);
}

void KXUIFileBrowser::State::click(const KXUIButton& button) {
    if (&button == &up)
        goUp();
    else if (&button == &hidden)
        browser.setShowsHiddenFiles(!filter.showsHidden);
    else if (&button == &confirm)
        pressed();
    else
        cancel();
}

static bool isPress(std::uint64_t number) {
    const _KXStepInput& step = _KXStep();
    return number >= step.pastNumber &&
           step.past[number - step.pastNumber].event.type == KXInputEventMouseDown;
}

/// Goes through the step event by event, so that what a part is told has had its effect on the others before
/// they are told of the next.
void KXUIFileBrowser::State::hearStep() {
    const std::uint64_t end = _KXNextEventNumber();
    std::uint64_t number =
        std::min({firstUnheard(), list._focus().firstUnheard(), name._focus().firstUnheard()});
    while (number++ < end && !isDone()) {
        hear(number);
        const bool question = !asked.empty();
        const int toldByList = isDone() ? 0 : list._pollUntil(number);
        const int toldByName = isDone() ? 0 : name._pollUntil(number);
        // Of four quick clicks the last two are meant for the file and not for the question.
        if (!question || !toldByList || list.selectionChanged() || !isPress(number - 1))
            hearParts(toldByList, toldByName);
    }
    if (isDone())
        return;
    const int toldByList = list.poll(); // what time does
    hearParts(toldByList, name.poll());
}

void KXUIFileBrowser::State::hearParts(int toldByList, int toldByName) {
    if (isDone())
        return;
    if (toldByName && name.changed()) {
        if (!*name.text())
            picked.clear(); // its bytes may be shown as an empty line
        list.setSelectedIndex(-1);
        dropQuestion();
        message.clear();
    }
    if (toldByList && list.selectionChanged() && list.selectedIndex() != -1)
        selected(list.selectedIndex());
    const int activated = toldByList ? list.activatedIndex() : -1;
    if (activated != -1 && entries[activated].isFolder)
        enter(_KXPathIn(folder, entries[activated].name), "");
    else if (activated != -1) {
        putName(entries[activated].name);
        pressed();
    } else if (toldByName && name.entered())
        pressed();
}

// A press on a button or between the parts leaves the keyboard where it was.
void KXUIFileBrowser::State::keepFocus(bool pressedHere) {
    if (name.isFocused() || list.hasFocus())
        nameHadFocus = name.isFocused();
    else if (pressedHere && !_KXFocus::keyboardOwner())
        nameHadFocus ? name.focus() : list.setFocus(-1);
}

int KXUIFileBrowser::poll() {
    State& state = *_state;
    if (!state.isShown || !_takesInput())
        return 0;
    for (KXUIButton* button : state.buttons)
        button->_KXUIWidget::clicked(KXMouseLeft); // for how they look
    state.hearStep();
    if (!state.isDone()) {
        state.keepFocus(KXMouse(KXMouseLeft) && mouseOver());
        return 0;
    }
    hide();
    return -1;
}
