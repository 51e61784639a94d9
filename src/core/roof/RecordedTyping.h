#pragma once

#include <SDL_events.h>

#include <string>
#include <string_view>
#include <vector>

// What is typed into a masked entry, such as a password, stands in no recording.

/// Whether what is typed or pasted now goes into a masked entry.
bool _KXTypingIsSecret();
/// An x for each character of a text.
std::string _KXHiddenText(std::string_view text);
/// Hides what an event of text has typed. A text of the event's own is kept in @a text as long as the event
/// is used.
void _KXHideTyping(SDL_Event& event, std::string& text);

/// The keys that are held, with what stands for each in the recording: a key that has typed into a masked
/// entry is another letter there until it comes up, so that in a replay as many are held as there were.
class _KXRecordedKeys {
public:
    /// Makes of an event of a key what is recorded.
    void write(SDL_KeyboardEvent& event, bool secret);

private:
    struct Key {
        SDL_Scancode pressed, shown;
    };

    SDL_Scancode freeLetter() const;

    std::vector<Key> _keys;
};
