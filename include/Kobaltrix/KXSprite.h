#pragma once

#include <Kobaltrix/KXDrawOptions.h>
#include <Kobaltrix/KXTimer.h>
#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

#include <memory>
#include <vector>

/// @file
/// Sprites: named animations of timed frames cut from one texture, with named bounding boxes.
///
/// Names are texts compared byte by byte and always copied. Nothing but KXSprite::draw() and
/// KXSprite::writeToFile() reports an error: a setter given an unknown or null name or a bad index does
/// nothing, a getter then gives the neutral value that is written with it. Indices count from 0.

class KXTexture;

/// One frame of an animation.
class KX_API KXSpriteFrameInfo {
public:
    /// A frame of duration 0 and zero bounds.
    KXSpriteFrameInfo();

    /// Sets how many KXSprite::poll() calls the frame stays up; 1 and less are one call.
    void setDuration(int duration);
    /// How many KXSprite::poll() calls the frame stays up.
    int duration() const;
    /// Sets the part of the texture that is shown, in pixels of the texture.
    void setBounds(KXRect bounds);
    /// The part of the texture that is shown, in pixels of the texture.
    KXRect bounds() const;

private:
    int32_t _duration;
    KXRect _bounds;
};

/// A list of frames and whether it loops.
class KX_API KXSpriteAnimationInfo {
public:
    /// A looping animation without frames.
    KXSpriteAnimationInfo();

    /// Number of frames.
    int numberOfFrames() const;
    /// 0 if the animation plays once and holds its last frame, any other value if it plays for ever.
    int loops() const;
    /// Sets whether the animation loops: a flag, not a count of repeats.
    void setLoops(int loops);
    /// Reads frame @a i into the outputs that are not null; writes nothing for a bad index.
    void getInfo(int i, int* duration, KXRect* bounds) const;
    /// Overwrites frame @a i.
    void setInfo(int i, int duration, KXRect bounds);
    /// Inserts a frame before frame @a i; the number of frames as the index appends it.
    void insertFrameInfo(int i, int duration, KXRect bounds);
    /// Removes frame @a i.
    void removeInfo(int i);

    // Used by the library itself.
    KX_INTERNAL bool _validateFrameIndex(int i) const;
    KX_INTERNAL KXSize _fullSize() const;

private:
    std::vector<KXSpriteFrameInfo> _frames;
    int32_t _loops;
};

/// A picture that moves: one of its animations plays at a time, a step with each poll().
///
/// The game polls once per logic step and draws once per frame. A sprite owns all it holds except its
/// texture, which belongs to the texture cache, and may be made without a window.
class KX_API KXSprite {
public:
    /// A sprite without texture, animations and boxes; alpha and scale are 1.0, rotation is 0.
    KXSprite();
    /// Frees everything but the texture.
    ~KXSprite();
    /// A copy of everything: the boxes too, and what plays goes on from the same frame.
    KXSprite(const KXSprite& other);
    /// Takes everything from @a other, which is then as if newly made.
    KXSprite(KXSprite&& other) noexcept;
    /// Becomes a copy of @a other, in everything.
    KXSprite& operator=(const KXSprite& other);
    /// Takes everything from @a other, which is then as if newly made.
    KXSprite& operator=(KXSprite&& other) noexcept;

    /// The texture's file name, null for none. The caller frees the result with free().
    char* textureName() const;
    /// Sets the texture's file name, looked up in the texture path; null for none.
    void setTextureName(const char* name);
    /// Sets the folder of the texture, with or without a trailing '/'; null for the working directory, an
    /// empty text for the root folder. Folder and name together may have up to 1022 bytes.
    void setTexturePath(const char* path);

    /// Plays an animation from its first frame, also when it plays already. The name need not exist yet: see
    /// poll() for what happens until it does. Null stops, with the frame index left as it is.
    void setAnimation(const char* name);
    /// The name set last, "(null)" for none. A temporary string, so at most 1023 bytes of it.
    const char* currentAnimation() const;
    /// Index of the frame on show.
    int currentFrameIndex() const;
    /// Counts one logic step, which shows the next frame when the present one's duration has passed. While
    /// the current animation does not exist (removed, renamed or not there yet) steps go on being counted:
    /// the frame index grows by one whenever the duration counted last has passed again, which is with every
    /// poll where there was no such animation when it was set. setAnimation() begins with the first frame
    /// again.
    void poll();
    /// -1 from when the last frame of an animation that does not loop is on show (not after its duration),
    /// and poll() does nothing more; else 0.
    int animationFinished() const;
    /// Shows a random frame of the current animation, so that many copies of a sprite do not move in step.
    /// Its time runs on by 0 to 100 steps, which count against the duration of the frame that was on show
    /// before: where durations differ, the frame shown now may stay for a shorter or longer time than its
    /// own.
    void randomizeCurrentFrame();

    /// Draws the frame on show with its top-left corner, before it is rotated, at @a at. Bounds and @a at are
    /// truncated to whole pixels. Throws std::bad_alloc if the texture cannot be loaded, whether there is a
    /// frame or not. Nothing is drawn without a texture name, without a current animation, and while that
    /// does not exist.
    void draw(KXPoint at);
    /// Draws the frame on show as the options say, together with what the sprite has itself: alpha and scale
    /// are multiplied, rotations added. `hero.draw({.flip = KXFlipLeftRight, .position = at, .origin =
    /// {8, 19}})` has the point (8, 19) of the frame at @a at. Bounds are truncated to whole pixels. Throws
    /// and draws nothing as the form above.
    void draw(const KXDrawOptions& options);
    /// Where draw() with these options has the frame on show, or the part of it. All zeros where there is no
    /// frame. Needs no texture: what of the frame reaches past the texture's edges counts.
    KXPlacedBox placedFrame(const KXDrawOptions& options) const;
    /// Where draw() with these options has a bounding box: flipped, scaled and turned along with the frame,
    /// also where it reaches out of that. All zeros for an unknown name.
    KXPlacedBox placedBox(const char* name, const KXDrawOptions& options) const;

    /// Sets the opacity, 0.0 to 1.0; not clamped.
    void setAlpha(float alpha);
    /// The opacity.
    float alpha() const;
    /// Sets the scale of drawing, anchored at the top-left corner; not clamped.
    void setScale(float scale);
    /// The scale of drawing.
    float scale() const;
    /// Sets the rotation in degrees, clockwise on screen, about the middle of the frame, of which the
    /// fraction is dropped: a frame of 5 by 4 pixels turns about (2, 2).
    void setRotation(int rotation);
    /// The rotation in degrees.
    int rotation() const;

    /// Adds an animation of one frame with duration 0 and zero bounds, unless there is one of that name.
    void addAnimation(const char* name);
    /// Appends a frame; an unknown name becomes a new looping animation of this one frame.
    void addFrameInfo(const char* name, KXRect bounds, int duration);
    /// Inserts a frame before frame @a i of an animation; its number of frames as the index appends it.
    void insertFrameInfo(int i, const char* name, KXRect bounds, int duration);
    /// Overwrites frame @a i of an animation.
    void setFrameInfo(int i, const char* name, KXRect bounds, int duration);
    /// Reads frame @a i of an animation into the outputs that are not null; writes nothing if there is none.
    void getFrameInfo(int i, const char* name, KXRect* bounds, int* duration) const;
    /// Removes frame @a i of an animation, and with its last frame the animation.
    void removeFrameInfo(int i, const char* name);
    /// Sets whether an animation loops: 0 plays it once, any other value for ever.
    void setAnimationLoops(const char* name, int loops);
    /// The value set for an animation, -1 by default; 0 for an unknown one.
    int animationLoops(const char* name) const;
    /// Number of animations.
    int numberOfAnimations() const;
    /// Name number @a i in byte-wise order, null out of range. The caller frees the result with free().
    char* animationAtIndex(int i) const;
    /// Gives an animation another name, in place of any that has it. Renaming one to its own name removes
    /// it. The current name does not follow.
    void renameAnimation(const char* from, const char* to);
    /// Removes an animation. If it was the current one, it stays so by name: nothing is drawn, and poll()
    /// goes on counting.
    void removeAnimation(const char* name);
    /// Number of frames of the current animation, -1 if there is no such animation.
    int numberOfFrames() const;
    /// Number of frames of an animation, -1 for an unknown one.
    int numberOfFrames(const char* name) const;
    /// The largest width and the largest height among the current animation's frames, each at least 0; zeros
    /// if there is no such animation.
    KXSize fullSize() const;
    /// The largest width and the largest height among an animation's frames, each at least 0; zeros for an
    /// unknown one.
    KXSize fullSize(const char* name) const;

    /// Sets the box of a name.
    void addBoundingBox(const char* name, KXRect box);
    /// Sets the box of a name, as addBoundingBox() does.
    void setBoundingBox(const char* name, KXRect box);
    /// The box of a name; all zeros for an unknown one.
    KXRect boundingBoxNamed(const char* name) const;
    /// Number of boxes.
    int numberOfBoundingBoxes() const;
    /// Name number @a i in byte-wise order, null out of range. The caller frees the result with free().
    char* boundingBoxAtIndex(int i) const;
    /// Gives a box another name, in place of any that has it. Renaming one to its own name removes it.
    void renameBoundingBox(const char* from, const char* to);
    /// Removes a box.
    void removeBoundingBox(const char* name);

    /// A new sprite with the same texture, alpha, scale, rotation and animations, but without boxes and with
    /// nothing playing. The caller deletes it. A copy has everything: `KXSprite another(sprite)`.
    KXSprite* clone() const;

    /// Reads texture name, boxes and animations from a sprite file, in place of those there are; what plays
    /// goes on by name. The texture path becomes the folder of the file, in every case.
    ///
    /// A file that ends too early leaves what could be read, and records of the file's lists that lie beyond
    /// its end read as frames and boxes of -1 by -1 pixels, 4096 of them at most. A name ends at its first
    /// zero byte. A file that does not begin like a sprite file, or whose version is below 1, changes nothing
    /// but the texture path. KXReloadChangedFiles() has it read again when it changes.
    /// @return 0 if the file does not begin like a sprite file, and for a folder; the file is then kept open
    ///   until the next such file. -1 in every other case, also when there is no file: ask KXFileExists().
    int load(const char* path);
    /// Writes texture name, boxes and animations to a sprite file, whole or not at all (see KXSaveFile).
    /// Widths and heights lose their fractions.
    /// @return -1 on success. 0 on failure, with a text in KXError(): a file that was there is what it was.
    int writeToFile(const char* path) const;
    /// Does what writeToFile() does, which tells more. @return always -1, also when the file cannot be
    /// written.
    int save(const char* path) const;
    /// Writes the texture's name, the animations with their frames, and the boxes to standard output, for
    /// people to read.
    void print() const;

    // Used by the library itself.
    KX_INTERNAL KXSpriteAnimationInfo* _getInfoWithName(const char* name) const;
    KX_INTERNAL bool _validateFrameIndex(int i, const char* name) const;
    KX_INTERNAL void _clearAnimations();
    KX_INTERNAL void _clearBoundingBoxes();

private:
    struct KX_INTERNAL Contents;
    KX_INTERNAL void _findCurrentInfo();
    KX_INTERNAL void _take(Contents& read);
    KX_INTERNAL void _followFile();
    KX_INTERNAL KXTexture* _texture();
    KX_INTERNAL void _takeState(const KXSprite& other);
    KX_INTERNAL KXRect _frameOnShow() const;
    KX_INTERNAL bool _placed(KXDrawOptions& options, KXRect& part) const;
    KX_INTERNAL KXPlacedBox _placedRect(const KXRect& rect, const KXDrawOptions& options) const;
    KX_INTERNAL bool _hasBox(const char* name) const;

    KX_INTERNAL Contents& _own();              // made when there are none yet
    KX_INTERNAL const Contents& _held() const; // empty ones if there are none

    std::unique_ptr<Contents> _contents;
    int32_t _currentFrame;
    KXTimer _frameTimer;
    float _alpha;
    float _scale;
    int32_t _rotation;

    // Found once and kept, since every poll and draw needs them.
    KXSpriteAnimationInfo* _currentInfo; // of the current animation; null if there is none
    KXTexture* _knownTexture;            // null when it must be asked for again
    const void* _knownTextureWindow;     // the window it was asked for in
    uint64_t _knownTextureGeneration;    // of the texture cache then
};
