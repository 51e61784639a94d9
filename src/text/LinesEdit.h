#pragma once

#include "text/TextBlocks.h"
#include "text/TextEditing.h"

/// Where a position is: line and character in it, both counted from 0.
struct _KXLineColumn {
    std::size_t line, column;
};

/// A text of many lines that is being edited. A line feed ends a line; every other line break that is put in
/// becomes one, and control characters but tabs are dropped. No change costs more for a longer text, and the
/// changes that can be taken back are as many as fit into some memory.
class _KXLinesEdit final : public _KXTextEditing {
public:
    _KXLinesEdit() : _KXTextEditing(static_cast<std::size_t>(-1), 16 << 20) {}

    std::size_t length() const override { return _blocks.total().characters; }
    std::size_t size() const override { return _blocks.total().bytes; }
    std::string part(std::size_t begin, std::size_t end) const override { return _blocks.part(begin, end); }
    /// Adds what lies between two positions to a text.
    void copyTo(std::string& to, std::size_t begin, std::size_t end) const { _blocks.copyTo(to, begin, end); }
    /// The whole text, which is put together again where it has changed.
    const std::string& text() const;
    /// Replaces everything and puts the cursor at the beginning. Null is the empty text. What was done before
    /// can not be taken back.
    void setText(const char* text);
    /// What is typed, or begins a new line, which is a change by itself.
    bool typeLine() { return insert("\n"); }

    /// One more than there are line feeds.
    std::size_t lineCount() const { return _blocks.total().breaks + 1; }
    std::size_t lineOf(std::size_t position) const { return _blocks.lineOf(position); }
    /// Where a line begins and ends, without its line feed. A line that is none begins and ends where the
    /// text ends.
    std::size_t lineStart(std::size_t line) const { return _blocks.lineStart(line); }
    std::size_t lineEnd(std::size_t line) const { return _blocks.lineEnd(line); }
    /// Selects the lines, with their ends, from that of one position to that of another.
    void selectLines(std::size_t anchor, std::size_t cursor);

    std::size_t before(std::size_t position) const override { return _blocks.before(position); }
    std::size_t after(std::size_t position) const override { return _blocks.after(position); }
    std::size_t characterStart(std::size_t position) const override {
        return _blocks.characterStart(position);
    }
    std::size_t positionOfCharacter(std::size_t index) const override {
        return _blocks.positionOfCharacter(index);
    }
    std::size_t characterAt(std::size_t position) const override {
        return _blocks.charactersBefore(position);
    }

private:
    char32_t codePoint(std::size_t position) const override;
    void exchange(std::size_t begin, std::size_t end, std::string_view text) override;
    std::string fit(const char* text) const override;

    _KXTextBlocks _blocks;
    mutable std::string _text;
    mutable bool _isPutTogether = true;
};
