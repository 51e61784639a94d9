#pragma once

#include "text/TextEditing.h"

/// One line of text that is being edited. Line breaks around what is put in are dropped, each of those within
/// and each tab becomes a blank, other control characters are dropped.
class _KXTextEdit final : public _KXTextEditing {
public:
    _KXTextEdit() : _KXTextEditing(1000, 1 << 20) {}

    const std::string& text() const { return _text; }
    std::size_t length() const override { return _length; }
    std::size_t size() const override { return _text.size(); }
    std::string part(std::size_t begin, std::size_t end) const override {
        return _text.substr(begin, end - begin);
    }
    /// Replaces everything and puts the cursor at the end. Null is the empty text. What was done before can
    /// not be taken back.
    void setText(const char* text) { setFittedText(fit(text ? text : "")); }
    /// Whether the text is hidden. Word steps and selections then take the whole of it, so that they do not
    /// tell where its blanks are.
    /// Nothing of it is kept that could be taken back.
    void setSecret(bool secret) { _KXTextEditing::setSecret(secret); }

    std::size_t before(std::size_t position) const override;
    std::size_t after(std::size_t position) const override;
    std::size_t characterStart(std::size_t position) const override;
    std::size_t positionOfCharacter(std::size_t index) const override;
    std::size_t characterAt(std::size_t position) const override;

private:
    char32_t codePoint(std::size_t position) const override;
    void exchange(std::size_t begin, std::size_t end, std::string_view text) override;
    std::string fit(const char* text) const override;

    std::string _text;
    std::size_t _length = 0; // of the text in characters, so that typing into a long one counts nothing anew
};
