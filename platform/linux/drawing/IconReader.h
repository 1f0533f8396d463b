#pragma once

#include <QImage>
#include <QString>

/// Finds, reads and decodes icons. What another program names may be anything: a file that never ends or never answers, a
/// picture that fills the memory, or one that finds a fault in a decoder. So Ovin does this in a process of its own, which
/// `IconLoader` starts, and ends when it is silent for too long.
namespace ovin {

/// An icon as some program names it.
struct IconName {
    /// In the icon theme, in the item's own theme folder, or the absolute path of a file.
    QString name;
    /// May be empty.
    QString themeFolder;

    friend bool operator==(const IconName&, const IconName&) = default;
};

struct ReadIcon {
    /// Null when there is none.
    QImage picture;
    /// Whether the picture is a shape without colours, to be drawn in that of texts.
    bool isSymbolic = false;
};

/// The picture of an icon that fits best in a square of `side` pixels, and never exceeds it. Small pictures stay small. GUI
/// thread.
[[nodiscard]] ReadIcon readIcon(const IconName& icon, int side);

/// The argument with which a program is started that calls `readIcons`.
constexpr const char* readIconsArgument = "--read-icons";

/// Reads icons for the process at the other end of standard input and output, until that ends the input. What comes in is a
/// QDataStream of the icon theme (its name, the fallback's name, the folders of themes, those of other icons), and then of
/// icons, each with a side as qint32; what goes out is one of answers in the same order: whether the picture is symbolic,
/// its size, and its pixels as a QByteArray, four bytes each (ARGB, premultiplied). Returns the exit status.
[[nodiscard]] int readIcons();

}  // namespace ovin
