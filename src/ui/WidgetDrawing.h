#pragma once

#include <Kobaltrix/KXTypes.h>

#include <utility>

class _KXUIWidget;

/// How opaque what widgets draw is: less while one that is disabled is drawn, with all that it is made of.
inline constinit float _KXWidgetOpacity = 1;

/// A colour of a widget as it is drawn at the moment.
inline KXColor _KXWidgetColor(KXColor color) {
    return {color.r, color.g, color.b, color.a * _KXWidgetOpacity};
}

/// What each draw() of a widget begins with.
class _KXWidgetDrawing {
public:
    explicit _KXWidgetDrawing(_KXUIWidget& widget);
    ~_KXWidgetDrawing() { _KXWidgetOpacity = _before; }
    _KXWidgetDrawing(const _KXWidgetDrawing&) = delete;
    _KXWidgetDrawing& operator=(const _KXWidgetDrawing&) = delete;

    /// Whether the widget is to be seen.
    explicit operator bool() const { return _isVisible; }

private:
    bool _isVisible;
    float _before;
};
