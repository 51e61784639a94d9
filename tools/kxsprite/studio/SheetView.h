#pragma once

#include "PictureView.h"
#include "Session.h"
#include "Sheet.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What the left button and Return do on the sheet.
enum class SheetTool {
    Select,  ///< Frames are chosen, moved and resized; beside them a new one is cut.
    Cut,     ///< A rectangle is cut.
    Cells,   ///< Cells of the grid are cut.
    Islands, ///< What lies by itself is cut.
    Pencil,  ///< Pixels are painted in the colour.
    Eraser,  ///< They become transparent.
    Fill,    ///< What is of one colour and connected is painted.
    Pick     ///< The colour becomes that of a pixel.
};

/// The sheet with the frames of the chosen animation, where they are cut.
///
/// By keys: with #SheetTool::Select arrows move the current frame and Alt with them its right and bottom
/// edge, by 8 pixels with Shift; Page Up and Page Down choose another frame. With the others arrows move a
/// cursor, Return begins a rectangle or a line and ends it, or does what a click does, and Escape gives it
/// up. With Alt the tools that paint take the colour below.
class SheetView : public PictureView {
public:
    SheetView(Session& session, Sheet& sheet) : _session(session), _sheet(sheet) {}

    bool showsGrid = true;                     ///< Of the session.
    bool showsPixels = true;                   ///< Lines between them.
    KXPixel paintColor = {255, 255, 255, 255}; ///< That is painted with.

    SheetTool tool() const { return _tool; }
    void setTool(SheetTool tool);
    /// What is under the pointer: place and colour, or what is being cut. Good until it is asked again.
    const char* status();

    KXUIDescription description() const override;

protected:
    Area extent() const override { return {0, 0, _sheet.width(), _sheet.height()}; }
    const char* hint() const override { return "Open a picture, or drop one here."; }
    void drawPicture() override;
    void drawMarks() override;
    bool hasPixelLines() const override { return showsPixels; }
    void pressed(KXPoint place, const KXUIMouse& mouse) override;
    void dragged(KXPoint place) override;
    void released(KXPoint place) override;
    void abandoned() override;
    KXCursor cursorAt(KXPoint place) override;
    int keyPressed(const KXUIKey& key) override;

private:
    enum class Act { None, Rectangle, Bounds, Stroke };

    const std::vector<Frame>& frames() const;
    KXPoint clamped(KXPoint place) const;
    std::vector<int> framesAt(KXPoint place) const;
    void chooseNextAt(KXPoint place);
    void pressedFrame(KXPoint place, const KXUIMouse& mouse);
    std::vector<Area> areasOf(KXPoint from, KXPoint to, bool isClick);
    Area markedArea(KXPoint from, KXPoint to) const;
    void cut(const std::vector<Area>& areas);
    bool paints() const { return _tool >= SheetTool::Pencil; }
    void paint(KXPoint from, KXPoint to, Join join);
    int arrowPressed(const KXUIKey& key, KXPoint way);
    void nudge(const KXUIKey& key, KXPoint pixels);
    void moveCursor(KXPoint way, bool isFast);
    int returnPressed();
    int islandUnder(KXPoint place);
    std::optional<KXPoint> place() const;
    void sortFrames();
    void drawGrid();
    void drawFrames();
    void drawFrameMark(const KXRect& seenRect, const char* numbers, int frame);
    void drawMarked();

    Session& _session;
    Sheet& _sheet;
    SheetTool _tool = SheetTool::Select;

    Act _act = Act::None;
    KXPoint _from = {0, 0}, _to = {0, 0}; // of the drag, places of the picture
    bool _hasMoved = false, _wasCurrent = false;
    AreaDrag _drag; // of the bounds

    KXPoint _cursor = {0.5f, 0.5f}; // of the keys
    bool _showsCursor = false;
    std::optional<KXPoint> _anchor; // where Return began
    int _island = -1;

    KXPoint _hovered = {-1, -1};  // the pixel that was under the pointer last,
    std::uint64_t _hoveredIn = 0; // the sheet then,
    int _hoveredIsland = -1;      // and the island there

    std::shared_ptr<const NamedAnimation> _sorted; // whose frames are in _order
    std::vector<int> _order;                       // from the top down
    float _highest = 0;                            // of them
    char _status[96] = "";
};
