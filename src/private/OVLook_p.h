#pragma once

#include "OVApplication.h"

#include <QBrush>
#include <QColor>
#include <QString>

class OVApplicationPrivate;

// The look of the editor and the painting preferences all tools share: the style-sheet theme,
// the four colours, the gradient brush and the texture patterns. Works on the theme and
// pattern fields of the application's private object; colours and the pattern index live in
// "user.ini".
class OVLook
{
public:
    explicit OVLook(OVApplicationPrivate& d);

    // The resource folder of a theme, or an empty one for a value outside the enumeration.
    static QString ThemeFolder(OVApplication::ThemeType type);
    // Applies the style sheet "pixel.qss" of the stored theme folder.
    bool LoadTheme();
    // Appends the pattern images of folder; returns how many were appended.
    int LoadPatterns(const QString& folder);

    // One of the four shared colours, stored in "user.ini" under key, with its default and the
    // signal that announces a change.
    struct Colour
    {
        OVApplication::UseDataRole key;
        Qt::GlobalColor def;
        void (OVApplication::*changed)();
    };
    static const Colour kBackground;
    static const Colour kForeground;
    static const Colour kMaskBackground;
    static const Colour kMaskForeground;

    static QColor GetColour(const Colour& colour);
    static void SetColour(const Colour& colour, const QColor& value);

    // The chosen texture pattern; a change is stored and announced.
    static int PatternIndex();
    static void SetPatternIndex(int index);

    // The process-wide gradient brush; it outlives any application object.
    static QBrush& Gradient();

private:
    OVApplicationPrivate& d;
};
