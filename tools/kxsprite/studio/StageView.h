#pragma once

#include "PictureView.h"
#include "Player.h"
#include "Session.h"
#include "Sheet.h"

#include <cstddef>
#include <memory>

/// What the left button and the arrows do on the stage.
enum class StageTool {
    Look, ///< The picture is moved.
    Boxes ///< Boxes are chosen, drawn, moved and resized.
};

/// The current frame, or the one that is played, as a game shows it, with the sprite's boxes.
///
/// By keys: arrows move the picture with #StageTool::Look. With #StageTool::Boxes they move the chosen box,
/// Alt with them its right and bottom edge, by 8 pixels with Shift; Page Up and Page Down choose another box,
/// Return adds one.
class StageView : public PictureView {
public:
    StageView(Session& session, Sheet& sheet, const Player& player)
        : _session(session), _sheet(sheet), _player(player) {}

    bool showsPixels = true;   ///< Lines between them.
    bool showsOnion = false;   ///< The frames before and after, reddish and bluish.
    bool showsFullSize = true; ///< The room that all frames of the animation need.
    bool showsBoxes = true;
    KXColor backgroundColor = {0, 0, 0, 0}; ///< Without opacity a checkerboard.

    StageTool tool() const { return _tool; }
    void setTool(StageTool tool) { _tool = tool; }

    KXUIDescription description() const override;

protected:
    Area extent() const override;
    const char* hint() const override { return "Cut a frame on the sheet to see it here."; }
    void drawPicture() override;
    void drawMarks() override;
    bool hasPixelLines() const override { return showsPixels; }
    KXColor ground() const override { return backgroundColor; }
    bool leftPans() const override { return _tool == StageTool::Look; }
    void pressed(KXPoint place, const KXUIMouse& mouse) override;
    void dragged(KXPoint place) override;
    void released(KXPoint place) override;
    void abandoned() override;
    KXCursor cursorAt(KXPoint place) override;
    int keyPressed(const KXUIKey& key) override;

private:
    enum class Act { None, Draw, Drag };

    int frameOnShow() const;
    bool isBoxAt(std::size_t box, KXPoint place) const;
    bool hasBoxAt(KXPoint place) const;
    unsigned gripOfBoxAt(KXPoint point) const;
    void chooseNextAt(KXPoint place);
    int arrowPressed(const KXUIKey& key, KXPoint way);
    void drawFrameOf(int frame, KXColor tint);
    void drawBox(std::size_t box);

    Session& _session;
    Sheet& _sheet;
    const Player& _player;
    StageTool _tool = StageTool::Look;

    Act _act = Act::None;
    KXPoint _from = {0, 0}, _to = {0, 0}; // of the drag, places of the picture
    bool _hasMoved = false, _wasChosen = false;
    AreaDrag _drag; // of the box

    mutable std::shared_ptr<const NamedAnimation> _measured; // whose size _extent is
    mutable Area _extent = {0, 0, 0, 0};
};
