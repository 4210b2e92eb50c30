// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_set>
#include <vector>

#include "foundation/xobject.h"
#include "graphics/geometry.h"
#include "graphics/plane.h"
#include "storage/compression_form.h"

class CColor;
class CFile;
class CGraphicsObject;
class CRefreshScreen;
class CWindow;
struct _canvas;

// Which plane a byte is read from. The name is part of the interface.
enum _channel { kChannelAlpha = -1, kChannelRed = 0, kChannelGreen = 1, kChannelBlue = 2 };

// A run of pixels that a flood fill painted. The name is part of the interface.
struct _floodfill {
    short x = 0;
    short y = 0;
    short length = 0;
};

// Hears that an object asks to be drawn anew, and that it dies.
class CInvalidateObserver {
public:
    virtual ~CInvalidateObserver() = default;
    virtual void onInvalidate(CGraphicsObject*, const CXRect*) {}
    virtual void onDestroy(CGraphicsObject*) {}
};

// The base of all that can stand on the screen: a picture of pixels, perhaps with an alpha plane, and everything that
// decides how it reaches the buffer it is drawn into, its destiny.
//
// Rows stand without gaps, top row first. The alpha plane holds a byte a pixel, 0 transparent, 255 opaque; without one
// the object is opaque. Planes may be shared between objects (see Plane). Without pixels every drawing operation
// leaves things as they are. No operation reads or writes outside of the planes, whatever size, clip or position says.
class CGraphicsObject : public CXObject {
public:
    explicit CGraphicsObject(CWindow* window) : window_(window) {}
    CGraphicsObject(CWindow* window, const CXSize& size, int bpp);              // pixels of 0
    CGraphicsObject(CWindow* window, const CXSize& size, int bpp, Plane data);  // over that plane
    CGraphicsObject(CWindow* window, const CGraphicsObject& other);             // over the other's planes
    ~CGraphicsObject() override;  // leaves its canvas and tells its observers
    CGraphicsObject(const CGraphicsObject&) = delete;
    CGraphicsObject& operator=(const CGraphicsObject&) = delete;

    // Frees what all graphics objects share: there is nothing, products of channels are computed.
    static void ReleaseGraphics() {}

    CXObject* clone() override;  // a new object over the same planes

    virtual char* GetDataPtr() { return reinterpret_cast<char*>(data_.bytes().data()); }  // null: no pixels
    virtual CXPoint getCenterPoint() const;                                               // in own coordinates
    virtual void setPosition(const CXPoint& p) { setPosition(p.x, p.y); }
    virtual void setPosition(int x, int y) { SetPosition(x, y); }
    virtual void SetPosition(const CXPoint& p) { SetPosition(p.x, p.y); }
    virtual void SetPosition(int x, int y);  // less the anchor; invalidates nothing, tells the collision inspector
    virtual void Move(const CXPoint& by) { Move(by.x, by.y); }
    virtual void Move(int dx, int dy);                          // invalidates where it was and where it is
    virtual void setAnchor(int x, int y) { anchor_ = {x, y}; }  // counts from the next SetPosition on
    virtual void setAnchor(const CXPoint& p) { setAnchor(p.x, p.y); }
    virtual void Visible(bool visible);  // nothing without a window
    virtual void Flush();                // gives up all planes
    // A byte of a plane at index y * width + x, 0 beyond it. Coded alpha is decoded for the read.
    virtual std::uint8_t GetPixel(_channel channel, const CXPoint& point);
    // Turns the picture upside down, the alpha plane too: rows change places.
    virtual void FlipH();
    // Turns it left to right: columns change places.
    virtual void FlipV();
    virtual void resetFlips();  // undoes FlipV, then FlipH
    virtual void Fill(const CColor* color);
    virtual void Fill(const CXRect& rect, const CColor* color);
    // Draws the object into its destiny, which has the same format afterwards in any case.
    virtual void Redraw();
    virtual void Blend(char*, int*, int, int) {}  // nothing calls it
    // Brings the planes to the screen's format. The name is kept by those that read files. The error word.
    virtual int Load(const CXString& name);
    virtual int Load(CFile*) { return LastError(); }
    // Writes the raw planes, or what the clipping rectangle leaves of them, behind a header that names `form`. An
    // object whose planes are coded is decoded for it. The error word of the file.
    virtual int Save(const CXString& name, _compression form);
    virtual int Save(CFile* file, _compression form);
    virtual int Width() const;  // times the scale factor, truncated
    virtual int Height() const;
    virtual CXSize Size() const { return size_; }  // not scaled
    virtual void setSize(const CXSize& size) { size_ = size; }
    virtual CXPoint getPosition() const { return position_; }
    virtual CXPoint GetPosition() const { return position_; }
    // What the object covers of its destiny: never left of or above it, and cut to its clipping rectangle.
    virtual CXRect GetBoundingBox() const;
    // Whether at least that part of the object's box lies in the rectangle, or in the other's box. False for an object
    // that covers nothing.
    virtual bool isNear(const CXRect& rect, int percent) const;
    virtual bool isNear(const CGraphicsObject* object, int percent) const;
    virtual CXPoint ClientCoords(const CXPoint& p) const { return p - GetPosition(); }
    virtual void SetClippingRect(const CXRect& rect);  // in own coordinates; without area: none
    virtual void Invalidate();
    virtual void addInvalidateObserver(CInvalidateObserver* observer);  // unless it is listed; not owned
    virtual void removeInvalidateObserver(CInvalidateObserver* observer);
    virtual void notifyInvalidate(const CXRect* rect);
    virtual CGraphicsObject* getDrawn() { return this; }  // the one whose planes are drawn
    // Stands there for a while, as `getPosition` tells it: without regard to the anchor, and nobody hears of it. For
    // those who draw an object away from its place and put it back.
    virtual void placeAt(const CXPoint& position) { position_ = position; }

    void Show() { Visible(true); }
    void Hide() { Visible(false); }
    bool isVisible() const { return visible_; }
    bool isInvalidated();              // and clears the mark
    bool isSolidAt(const CXPoint& p);  // of the destiny: not transparent; without an alpha plane always
    virtual bool isInside(int x, int y, bool useAlpha);  // all four edges of the box included
    void FitRect(const CXRect& rect);                    // centres the object in it
    void FitObject(const CGraphicsObject* other);
    const CXString& getFileName() const { return fileName_; }
    void setFileName(const CXString& name) { fileName_ = name; }
    CWindow* getWindow() const { return window_; }
    CRefreshScreen* GetCanvas() const { return canvas_; }
    void SetCanvas(CRefreshScreen* canvas);
    CGraphicsObject* GetDestiny() const { return destiny_; }
    void SetDestiny(CGraphicsObject* destiny);
    int getBpp() const { return bpp_; }
    int GetFlags() const { return flags_; }
    void SetFlags(int flags) { flags_ = flags; }
    int getPitch() const { return pitch_; }  // in pixels
    void setScaleFactor(float x, float y);   // of Width and Height alone
    void setAutoClip(bool on) { autoClip_ = on; }
    const CXRect& GetClippingRect() const { return clip_; }
    const CXRect& GetViewport() const { return viewport_; }
    void SetViewport(const CXRect& rect) { viewport_ = rect; }
    const CXPoint& getAnchor() const { return anchor_; }
    bool isFlippedH() const { return flippedH_; }
    bool isFlippedV() const { return flippedV_; }
    int GetOpacity() const { return opacity_; }
    void SetOpacity(int opacity) { opacity_ = static_cast<std::uint8_t>(opacity); }  // invalidates nothing
    void AddOpacity(short by);                                                       // kept within 0 and 255
    void setAlphaAsMask(bool on) { alphaAsMask_ = on; }
    bool isCanvasLocked() const { return canvasLocked_; }
    void lockCanvas(bool on) { canvasLocked_ = on; }  // while locked, destiny and clipping rectangle stay
    void setMonitorCollisions(bool on) { monitorCollisions_ = on; }
    bool isMonitorCollisions() const { return monitorCollisions_; }
    int GetPixelSize() const;  // in bytes
    int GetDataSize() const;
    int GetChannelSize(int i) const { return i >= 0 && i < 4 ? channelSizes_[i] : 0; }

    // The planes, in the form that `getCompression` tells.
    const Plane& getData() const { return data_; }
    const Plane& getAlpha() const { return alpha_; }
    void setPlanes(const CXSize& size, int bpp, Plane data, Plane alpha, _compression form = kCompressionRaw);
    void link(CGraphicsObject* other);  // takes the other's planes for its own; size and format stay
    _compression getCompression() const { return compression_; }

    // Codes raw planes into runs for form 4, else does nothing; nor does it for pixels of an odd number of bytes.
    void Compress(_compression form);
    void DeCompress();      // a dictionary coder's stream becomes what it holds
    void DeCompressRLE2();  // runs become raw planes, which are held aside until `bringBackCompressed`
    void bringBackCompressed();

    CColor GetPixel(int x, int y) const;  // black outside, and for coded planes
    void SetPixel(int x, int y, const CColor& color);
    // Writes the pixel with each channel times `k` over 256, in rows of `getPitch` pixels.
    void putPixel(int x, int y, short pixel, int k);
    void putPixel15(int x, int y, short pixel, int k);
    void putPixel16(int x, int y, short pixel, int k);
    void crop(const CXRect& rect);  // hides the object, then keeps the part inside
    // Become a deep copy, with window, destiny, format, clip, viewport and position; of a clipped source, of that part
    // alone. The name gets "copy" behind it.
    void Copy(CGraphicsObject* other);
    void Copy(CGraphicsObject* other, const CXRect& part);  // at the part's top left corner
    void Alloc();                                           // new pixels of the current size and format
    bool Convert(int bpp);                                  // of at least 4 pixels; records the format

    // Stamps the mask's alpha over this object's at that place, after its latest stamp here is undone.
    void mergeAlpha(const CXPoint& at, CGraphicsObject* mask);
    void restoreAlpha(CGraphicsObject* mask);  // undoes the mask's latest stamp

    void ToGrayScale();
    void InvertColors();                             // 15 bits alone
    void outline(unsigned short pixel, int frames);  // frames inward along the edges, opaque; needs an alpha plane
    void Scale(double sx, double sy);                // nearest neighbour
    void Scale2x();                                  // halves the picture; its alpha plane is new and transparent
    void CreateHistogram();                          // counts of each 16-bit pixel value below 65535
    void ReleaseHistogram();
    std::span<const int> getHistogram() const { return rare_ ? rare_->histogram : std::span<const int>(); }
    void Split();                                                // 24 bits into planes of red, green and blue
    void setChannel(_channel channel, Plane plane);              // one of them, for `JoinChannels`, or the alpha plane
    void JoinChannels();                                         // and back, into the format told before
    std::vector<std::uint8_t> Join2Channels() const;             // 32-bit pixels of 24-bit ones and the alpha plane
    void SplitOn2(std::span<const std::uint8_t> pixels, int n);  // 24 bits and alpha out of n 32-bit pixels

    // Fills the region round the start in `target`, 16-bit pixels of this object's size; pixels of 0 in this object
    // are walls. The spans that it painted go to `spans` and are kept for `FloodFill`. The rectangle that holds them.
    CXRect PrepareFloodFill(const CXPoint& start, const CColor& color, std::span<std::uint16_t> target,
                            std::vector<_floodfill>& spans);
    void FloodFill(const CColor& color, std::span<std::uint16_t> target);  // paints the kept spans
    int getFFEnterances() const { return static_cast<int>(getFFArray().size()); }
    std::span<const _floodfill> getFFArray() const { return rare_ ? rare_->spans : std::span<const _floodfill>(); }

    // The family of copies from a source to a target of the same format, one of which `Redraw` chooses. They draw only
    // what lies inside of both sides' planes. False when a clip is turned inside out or a side is missing. Their names
    // are part of the interface.
    static bool __copy_blend(const _canvas* source, const _canvas* target, int opacity);
    static bool __copy_alpha_blend15(const _canvas* source, const _canvas* target, int opacity);
    static bool __copy_alpha_blend16(const _canvas* source, const _canvas* target, int opacity);
    static bool __copy_blend15(const _canvas* source, const _canvas* target, int opacity);
    static bool __copy_blend16(const _canvas* source, const _canvas* target, int opacity);
    static bool copyToCanvas(const _canvas* source, const _canvas* target);
    static bool __copy_alpha_as_mask(const _canvas* source, const _canvas* target);
    static bool __copy_alpha(const _canvas* source, const _canvas* target);
    static bool __copy_alpha15(const _canvas* source, const _canvas* target);
    static bool __copy_alpha16(const _canvas* source, const _canvas* target);
    static bool __copy(const _canvas* source, const _canvas* target);
    static bool __copy_bpp15_16(const _canvas* source, const _canvas* target);
    static bool __copy_bpp24(const _canvas* source, const _canvas* target);

protected:
    void movedTo(const CXPoint& position);  // stores it and tells the collision inspector
    void markInvalidated() { invalidated_ = true; }
    bool isMarkedInvalidated() const { return invalidated_; }
    void setWindow(CWindow* window) { window_ = window; }
    bool hasDrawablePixels() const { return data_ && size_.width > 0 && size_.height > 0; }

    CXString fileName_;
    CWindow* window_;
    CRefreshScreen* canvas_ = nullptr;    // the one that lists it
    CGraphicsObject* destiny_ = nullptr;  // not owned
    CXSize size_;
    int pitch_ = 0;
    Plane data_;
    Plane alpha_;
    int bpp_ = 0;
    int flags_ = 0;
    float scaleX_ = 1.0F;
    float scaleY_ = 1.0F;
    bool autoClip_ = false;
    CXRect clip_;
    CXRect viewport_;
    CXPoint position_;
    CXPoint anchor_;
    bool flippedH_ = false;
    bool flippedV_ = false;
    int channelSizes_[4] = {};
    bool alphaAsMask_ = false;
    int dataSize_ = 0;   // bytes of the raw pixel plane
    int codedSize_ = 0;  // bytes of the coded one
    _compression compression_ = kCompressionRaw;
    std::uint8_t opacity_ = 255;
    bool visible_ = true;

private:
    // Runs `turn` on raw planes and codes them again when they were coded.
    template <class Turn>
    void withRawPlanes(Turn turn);
    void draw();
    void takeFrom(const CGraphicsObject& other);
    void copyPart(CGraphicsObject* other, const CXRect& part);

    void fillRect(const CXRect& rect, const CColor* color);
    Plane* planeOf(_channel channel);

    // What few objects ever have; without it an animation's frames are a quarter smaller.
    struct Rare {
        Plane red, green, blue;  // only while split
        std::vector<int> histogram;
        std::vector<_floodfill> spans;
        CXRect mergeRect;                     // of the latest stamp with this object as the mask
        std::vector<std::uint8_t> mergeSave;  // the alpha bytes that it covered
    };
    Rare& rare();  // made when first used

    std::unique_ptr<Rare> rare_;
    bool canvasLocked_ = false;
    bool invalidated_ = false;
    std::vector<CInvalidateObserver*> invalidateObservers_;  // not owned
    Plane heldData_, heldAlpha_;                             // coded planes, while they are decoded for drawing
    int heldBpp_ = 0;
    bool monitorCollisions_ = false;
    // Those that this object is the destiny of; they lose it when this object dies. Made when first used.
    std::unique_ptr<std::unordered_set<CGraphicsObject*>> drawers_;
};
