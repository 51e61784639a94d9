#include "Rebinding.h"

#include <string_view>
#include <vector>

std::string Controls::inputsOf(const KXActions& actions, const char* action) {
    std::string text;
    for (const bool ofPads : {false, true})
        for (const KXInput& input : actions.inputs(action)) {
            if ((input.kind == KXInputKindPadButton) != ofPads)
                continue;
            text += (text.empty() ? "" : ", ") + std::string(KXInputName(input));
        }
    return text.empty() ? "nothing" : text;
}

std::string Controls::rebind(KXActions& actions, const char* action, const KXInput& input) {
    std::string news;
    const std::string name = action;
    while (const char* const other = actions.actionOf(input)) {
        if (name != other)
            news = KXTempString("\"%s\" has lost %s.", other, KXInputName(input));
        actions.unbind(other, input);
    }
    const KXInputList bound = actions.inputs(name.c_str());
    for (const KXInput& old : std::vector(bound.begin(), bound.end()))
        if ((old.kind == KXInputKindPadButton) == (input.kind == KXInputKindPadButton))
            actions.unbind(name.c_str(), old);
    actions.bind(name.c_str(), input);
    return news;
}
