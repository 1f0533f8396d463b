#include "platform/linux/drawing/IconLoader.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTemporaryDir>
#include <functional>

namespace ovin {
namespace {

using namespace std::chrono_literals;

constexpr int side = 22;

bool within(std::chrono::milliseconds time, const std::function<bool()>& holds) {
    const QDeadlineTimer deadline(time);
    while (!holds() && !deadline.hasExpired()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return holds();
}

class IconLoaderTest : public testing::Test {
protected:
    IconName picture(const QString& name) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(folder.filePath(name)));
        return {folder.filePath(name), {}};
    }

    /// A program that does as `commands` say the first time that it is started, and reads icons after that.
    QString readerThatFirst(const QByteArray& commands) {
        const QString path = folder.filePath("reader");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nif mkdir '" + folder.filePath("started").toLocal8Bit() + "' 2>/dev/null; then\n" + commands +
                   "\nfi\nexec '" OVIN_PROGRAM "' \"$@\"\n");
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return path;
    }

    static bool comes(const IconLoader& loader, const IconName& icon, std::chrono::milliseconds time = 20s) {
        return within(time, [&] { return loader.known(icon, side).has_value(); });
    }

    static bool isThere(const IconLoader& loader, const IconName& icon) {
        return comes(loader, icon) && !loader.known(icon, side)->picture.isNull();
    }

    /// A theme that has `mail` alone.
    void makeTheme(const QString& name, int size, const QColor& color) {
        const QDir theme(folder.filePath(name));
        ASSERT_TRUE(theme.mkpath("apps"));
        QFile index(theme.filePath("index.theme"));
        ASSERT_TRUE(index.open(QIODevice::WriteOnly));
        index.write("[Icon Theme]\nName=Theme\nDirectories=apps\n[apps]\nSize=" + QByteArray::number(size) + "\n");
        QImage image(size, size, QImage::Format_ARGB32);
        image.fill(color);
        ASSERT_TRUE(image.save(theme.filePath("apps/mail.png")));
        QIcon::setThemeSearchPaths({folder.path()});
    }

    const IconName mail{"mail", {}};
    const QTemporaryDir folder;
};

TEST_F(IconLoaderTest, IconsComeLaterAndAreKnownFromThenOn) {
    IconLoader loader(OVIN_PROGRAM);
    const IconName red = picture("red.png");
    int times = 0;
    QObject::connect(&loader, &IconLoader::loaded, [&] { ++times; });
    loader.load(red, side);
    EXPECT_EQ(loader.known(red, side), std::nullopt);
    EXPECT_EQ(times, 0);
    ASSERT_TRUE(comes(loader, red));
    EXPECT_EQ(loader.known(red, side)->picture.pixelColor(8, 8), QColor(Qt::red));
    EXPECT_EQ(times, 1);
}

TEST_F(IconLoaderTest, WhatIsNoIconIsKnownToBeNone) {
    IconLoader loader(OVIN_PROGRAM);
    const IconName missing{folder.filePath("missing.png"), {}};
    loader.load(missing, side);
    ASSERT_TRUE(comes(loader, missing));
    EXPECT_TRUE(loader.known(missing, side)->picture.isNull());
}

TEST_F(IconLoaderTest, AFileThatHasChangedIsShownAsItWasUntilItIsReadAgain) {
    IconLoader loader(OVIN_PROGRAM);
    const IconName icon = picture("icon.png");
    loader.load(icon, side);
    ASSERT_TRUE(isThere(loader, icon));
    QImage green(16, 16, QImage::Format_ARGB32);
    green.fill(Qt::green);
    ASSERT_TRUE(green.save(icon.name));
    loader.load(icon, side);
    EXPECT_EQ(loader.known(icon, side)->picture.pixelColor(8, 8), QColor(Qt::red));
    EXPECT_TRUE(within(20s, [&] { return loader.known(icon, side)->picture.pixelColor(8, 8) == QColor(Qt::green); }));
}

TEST_F(IconLoaderTest, NoReaderStaysWhenEverythingIsAnswered) {
    IconLoader loader(OVIN_PROGRAM);
    for (const char* name : {"one.png", "two.png"}) {
        const IconName icon = picture(name);
        loader.load(icon, side);
        EXPECT_TRUE(isThere(loader, icon));
        EXPECT_TRUE(within(20s, [&] { return loader.findChildren<QProcess*>().isEmpty(); }));
    }
}

TEST_F(IconLoaderTest, AnIconThatIsNeverAnsweredKeepsOthersWaitingForALittleWhileOnly) {
    IconLoader loader(readerThatFirst("exec sleep 1000"), 2s);
    const IconName first = picture("first.png");
    const IconName second = picture("second.png");
    loader.load(first, side);
    loader.load(second, side);
    EXPECT_TRUE(isThere(loader, second));
    EXPECT_TRUE(loader.known(first, side)->picture.isNull());
    loader.load(first, side);
    EXPECT_TRUE(within(20s, [&] { return !loader.known(first, side)->picture.isNull(); })) << "it is never asked again";
}

TEST_F(IconLoaderTest, AnIconThatKillsItsReaderIsNoneAndOthersCome) {
    IconLoader loader(readerThatFirst("kill -SEGV $$"));
    const IconName first = picture("first.png");
    const IconName second = picture("second.png");
    loader.load(first, side);
    loader.load(second, side);
    EXPECT_TRUE(isThere(loader, second));
    EXPECT_TRUE(loader.known(first, side)->picture.isNull());
}

TEST_F(IconLoaderTest, WhatAReaderSaysIsNotBelieved) {
    // Symbolic, 2147483647 pixels to a side, and 16 bytes of them.
    IconLoader loader(
        readerThatFirst(R"(printf '\001\177\377\377\377\177\377\377\377\000\000\000\020aaaabbbbccccdddd'; cat)"));
    const IconName icon = picture("icon.png");
    loader.load(icon, side);
    ASSERT_TRUE(comes(loader, icon));
    EXPECT_TRUE(loader.known(icon, side)->picture.isNull());
}

TEST_F(IconLoaderTest, IconsOfThemesFitTheirPlaceOnAScaledDesktopToo) {
    makeTheme("hicolor", 48, Qt::red);
    QIcon::setThemeName("hicolor");
    qputenv("QT_SCALE_FACTOR", "2");
    IconLoader loader(OVIN_PROGRAM);
    loader.load(mail, side);
    EXPECT_TRUE(comes(loader, mail));
    qunsetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(loader.known(mail, side)->picture.size(), QSize(side, side));
}

TEST_F(IconLoaderTest, AnIconOfAThemeIsReadAgainOnlyInAnotherTheme) {
    makeTheme("light", side, Qt::red);
    makeTheme("dark", side, Qt::green);
    QIcon::setThemeName("light");
    IconLoader loader(OVIN_PROGRAM);
    loader.load(mail, side);
    ASSERT_TRUE(isThere(loader, mail));
    const auto color = [&] { return loader.known(mail, side)->picture.pixelColor(8, 8); };
    QIcon::setThemeName("dark");
    loader.load(mail, side);
    EXPECT_EQ(color(), QColor(Qt::red));
    EXPECT_TRUE(within(20s, [&] { return color() == QColor(Qt::green); }));
    EXPECT_TRUE(within(20s, [&] { return loader.findChildren<QProcess*>().isEmpty(); }));
    loader.load(mail, side);
    QCoreApplication::processEvents();
    EXPECT_TRUE(loader.findChildren<QProcess*>().isEmpty()) << "it is read again in the same theme";
}

TEST_F(IconLoaderTest, WithoutAReaderThereAreNoIcons) {
    IconLoader loader(folder.filePath("nothing"));
    for (int i = 0; i < 20; ++i) loader.load({QString::number(i), {}}, side);
    for (int i = 0; i < 20; ++i) EXPECT_TRUE(comes(loader, {QString::number(i), {}}));
}

TEST_F(IconLoaderTest, ALoaderThatGoesTakesItsReaderAlong) {
    auto loader = std::make_unique<IconLoader>(readerThatFirst("exec sleep 1000"));
    loader->load(picture("icon.png"), side);
    ASSERT_TRUE(within(20s, [&] { return QFile::exists(folder.filePath("started")); }));
    const auto readers = loader->findChildren<QProcess*>();
    ASSERT_EQ(readers.size(), 1);
    const qint64 pid = readers.front()->processId();
    loader.reset();
    EXPECT_FALSE(QFile::exists(QStringLiteral("/proc/%1").arg(pid)));
}

}  // namespace
}  // namespace ovin
