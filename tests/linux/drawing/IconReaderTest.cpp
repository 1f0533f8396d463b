#include "platform/linux/drawing/IconReader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTemporaryDir>
#include <string>

namespace ovin {
namespace {

constexpr QRgb colour = 0xFFC01090;
constexpr int side = 44;

class IconReader : public testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QString writePicture(const QString& name, QSize size = {16, 16}) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(QColor::fromRgba(colour));
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(image.save(path));
        return path;
    }

    const QTemporaryDir folder;
};

QByteArray drawing(const QByteArray& content = {}) {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="4"><rect width="8" height="4" fill="red"/>)" +
           content + "</svg>";
}

bool isFound(const QString& name, const QString& themeFolder = {}) {
    return !readIcon({name, themeFolder}, side).picture.isNull();
}

TEST_F(IconReader, AnIconIsFoundInTheFolderThatComesWithIt) {
    writePicture("mail.png");
    writePicture("hicolor/22x22/apps/cloud.png");
    EXPECT_EQ(readIcon({"mail", folder.path()}, side).picture.pixelColor(8, 8), QColor::fromRgba(colour));
    EXPECT_TRUE(isFound("cloud", folder.path()));
    EXPECT_FALSE(isFound("cloud", "."));
}

TEST_F(IconReader, AnIconIsFoundByItsPathWithItsSuffixOrWithout) {
    EXPECT_TRUE(isFound(writePicture("mail.png")));
    EXPECT_TRUE(isFound(folder.filePath("mail")));
}

TEST_F(IconReader, PicturesFitTheirPlaceAndSmallOnesStaySmall) {
    EXPECT_EQ(readIcon({writePicture("large.png", {200, 100}), {}}, side).picture.size(), QSize(44, 22));
    EXPECT_EQ(readIcon({writePicture("small.png", {16, 16}), {}}, side).picture.size(), QSize(16, 16));
    EXPECT_EQ(readIcon({writePicture("line.png", {1000, 1}), {}}, side).picture.size(), QSize(44, 1));
    EXPECT_EQ(readIcon({write("drawing.svg", drawing()), {}}, side).picture.size(), QSize(44, 22));
}

TEST_F(IconReader, ASymbolicIconIsToldFromOthersByItsName) {
    EXPECT_TRUE(readIcon({writePicture("mail-symbolic.png"), {}}, side).isSymbolic);
    EXPECT_FALSE(readIcon({writePicture("mail.png"), {}}, side).isSymbolic);
}

TEST_F(IconReader, AThemeHasWhatWasInstalledBeforeTheReaderBegan) {
    write("themes/hicolor/index.theme", "[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps\n[48x48/apps]\nSize=48\n");
    writePicture("themes/hicolor/48x48/apps/later.png", {48, 48});
    writePicture("themes/hicolor/48x48/apps/shape-symbolic.png", {48, 48});
    QIcon::setThemeSearchPaths({folder.filePath("themes")});
    QIcon::setThemeName("hicolor");
    EXPECT_EQ(readIcon({"later", {}}, side).picture.size(), QSize(44, 44));
    EXPECT_TRUE(readIcon({"shape", {}}, side).isSymbolic);
    EXPECT_FALSE(isFound("no-such-icon"));
    EXPECT_FALSE(isFound(""));
}

TEST_F(IconReader, ANameThatLeadsOutOfItsFolderFindsNothing) {
    writePicture("secret.png");
    ASSERT_TRUE(QDir(folder.path()).mkdir("theme"));
    for (const char* name : {"../secret", "../secret.png", "./../secret", "..", "theme/../../secret"})
        EXPECT_FALSE(isFound(name, folder.filePath("theme"))) << name;
}

TEST_F(IconReader, WhatIsNoRegularFileIsNotOpened) {
    const QString pipe = folder.filePath("pipe.png");
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    for (const QString& path : {pipe, folder.path(), QString("/dev/zero"), folder.filePath("missing.png")})
        EXPECT_FALSE(isFound(path)) << path.toStdString();
}

TEST_F(IconReader, WhatIsNoPictureOrTooLargeIsNone) {
    EXPECT_FALSE(isFound(write("broken.png", "no picture")));
    EXPECT_FALSE(isFound(write("empty.png", "")));
    EXPECT_FALSE(isFound(write("long.svg", drawing(QByteArray(9 << 20, ' ')))));
    EXPECT_FALSE(isFound(writePicture("wide.png", {5000, 1})));
}

TEST_F(IconReader, ACompressedDrawingIsNone) {
    // What gzip makes of a drawing; a short one may hide gigabytes.
    const QByteArray deflated = qCompress(drawing()).mid(6).chopped(4);
    EXPECT_FALSE(
        isFound(write("bomb.svg", QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + deflated + QByteArray(8, '\0'))));
}

TEST_F(IconReader, FormatsThatNoIconHasAreNotDecoded) {
    // The toolkit reads such pictures.
    EXPECT_FALSE(isFound(write("picture.ppm", QByteArray("P6 1 1 255\n") + QByteArray(3, '\x7f'))));
}

}  // namespace
}  // namespace ovin
