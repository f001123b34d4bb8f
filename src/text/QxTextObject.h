#pragma once

#include <hwui/Paint.h>

namespace QxFontEffect {

class List;
class QxEffect;
class QxFontDrawing;
class QxString;
class QxTextObjectImpl;
class QxView;

/// One decorated text: what is said, with which font and paint, where its lines stand, which effects lie on it, and
/// the last picture drawn of it.
///
/// Made in two steps: the constructor makes an empty shell, `Construct` the object, which is then registered and has
/// a handle. On a shell every method fails with error 8, which is logged and stored. Setters keep what they are given
/// and draw nothing; setting a text or a font also loads fonts, for the whole process.
///
/// Objects made on the stack or deleted directly must not be bound in the registry; bound ones are given back with
/// `QxTextInstanceManager::Release`. One object is used from one thread at a time; different objects may be used from
/// different threads.
class QxTextObject {
public:
    QxTextObject();
    QxTextObject(const QxTextObject&) = delete;
    QxTextObject& operator=(const QxTextObject&) = delete;
    virtual ~QxTextObject();

    /// Makes and registers the object. Already constructed: false and error 4. Out of memory: false.
    bool Construct();

    /// Handle in the registry; -1 on failure.
    int GetRuntimeHandle() const;

    /// The effect stack, owned by the object; null on failure.
    QxEffect* GetEffect();

    /// Copies the text and loads the font families of its scripts. Null takes the text away.
    bool SetText(const QxString* text);
    bool SetText(const wchar_t* text);

    /// The text, owned by the object; null when there is none.
    QxString* GetText();

    /// Names the wished family. Null: error 7.
    bool SetFontFamilyName(const char* family);

    /// Registers a font file and draws with it. Null path: error 7. A font that cannot be loaded: false, and the font
    /// stays what it was.
    bool SetFont(const char* path);

    /// The same with the bytes of the font; the path only names it.
    /// @param data  `size` bytes made with `new char[]`, taken over once the path has been accepted.
    bool SetFont(const char* path, char* data, unsigned int size);

    /// The drawing driver, owned by the object.
    QxFontDrawing* GetFont();

    /// Replaces the lines by those of a List of QxLineInfo records, which are taken over (the list is not). Null:
    /// error 7. The object's own list comes out empty.
    bool SetLineInfo(const List* lineInfo);

    /// The lines, owned by the object.
    List* GetLineInfo();

    /// The object of a handle, or null.
    static QxTextObject* FindQxTextObject(int handle);

    /// Both bits are kept; italic is wished for when fonts are chosen.
    bool SetTextStyle(bool bold, bool italic);
    bool isBoldTextStyle();
    bool isItalicTextStyle();

    /// The view, owned by the object.
    QxView* GetView();

    /// A copy of the paint; a default one on failure.
    android::Paint GetPaint();
    void SetPaint(android::Paint& paint);

    /// Colours are 0xAARRGGBB, not premultiplied.
    void SetBackgroundColor(unsigned int color, bool enabled);
    void SetTextColor(unsigned int color);
    unsigned int GetTextColor();

    /// Draws text, effects and line backgrounds into a new picture of width x height pixels.
    ///
    /// Each pixel is one 32-bit 0xAARRGGBB value on little-endian machines (bytes B, G, R, A), not premultiplied. The
    /// view's bitmap size, paddings and gravity clip the picture: edges towards which the text is aligned stay open.
    /// Line bounds move by the effect margins, so that a second render without newly captured lines draws the
    /// backgrounds lower.
    ///
    /// @return width * height * 4 bytes, owned by the object and valid until the next render; null for sizes below 0
    ///         or beyond 32 bits of bytes and when memory runs out, which leaves the last picture in place.
    unsigned char* RenderTextEffect(int width, int height);

private:
    template <typename Text>
    bool storeText(const Text* text);
    void SetTextLocaleListId();
    bool useFont(const char* path, char* data, unsigned int size);

    QxTextObjectImpl* M;
};

/// The registry's release callback: deletes the object. Null only logs.
void __releaseQxTextCallback(QxTextObject* object);

}  // namespace QxFontEffect
