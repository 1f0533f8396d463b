#include "platform/linux/drawing/QtIcons.h"

#include <gtest/gtest.h>

#include <QImage>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "platform/linux/drawing/NamedIcon.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Replaces the theme's index. The toolkit believes an index that is no older than the folders.
void writeIndex(const fs::path& theme, const std::string& bytes, std::chrono::seconds ahead) {
    std::ofstream(theme / "new", std::ios::binary) << bytes;
    fs::last_write_time(theme / "new", fs::file_time_type::clock::now() + ahead);
    fs::rename(theme / "new", theme / "icon-theme.cache");
}

TEST(QtIcons, AnIconThatIsInstalledLaterIsFoundOnceItIsIndexed) {
    const TemporaryFolder folder;
    const fs::path theme = folder.path() / "hicolor";
    fs::create_directories(theme / "48x48/apps");
    std::ofstream(theme / "index.theme") << "[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps\n[48x48/apps]\nSize=48\n";
    // Version 1.0; one empty list of icons at byte 12, and no folders at byte 20.
    writeIndex(theme, std::string("\0\1\0\0\0\0\0\14\0\0\0\24\0\0\0\1\377\377\377\377\0\0\0\0", 24), 60s);
    QIcon::setThemeSearchPaths({QString::fromStdString(folder.path().string())});
    QIcon::setThemeName("hicolor");

    const Image image(std::make_shared<NamedIcon>("later"));
    EXPECT_TRUE(qtIcon(image).isNull());
    QImage picture(48, 48, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(QString::fromStdString((theme / "48x48/apps/later.png").string())));
    EXPECT_TRUE(qtIcon(image).isNull()) << "the index does not name it";
    writeIndex(theme, "", 120s);  // without one that it can read, the toolkit looks for the file itself
    EXPECT_FALSE(qtIcon(image).isNull());
}

}  // namespace
}  // namespace ovin
