// Icon files: whatever a file holds, its picture is none or fits the place that it is for.

#include <sys/mman.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QImage>
#include <cstddef>
#include <cstdint>

#include "platform/linux/drawing/IconReader.h"

namespace {

constexpr int side = 44;

void useToolkit() {
    static int count = 3;
    static char words[][10] = {"fuzzer", "-platform", "minimal"};
    static char* arguments[] = {words[0], words[1], words[2], nullptr};
    static const QGuiApplication application(count, arguments);
    // Decoders complain of what they are fed.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = (useToolkit(), memfd_create("icon", MFD_CLOEXEC));
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size)) __builtin_trap();
    const ovin::ReadIcon icon = ovin::readIcon({QStringLiteral("/proc/self/fd/%1").arg(file), {}}, side);
    if (icon.picture.width() > side || icon.picture.height() > side) __builtin_trap();
    return 0;
}
