#include "app/AppDelegate.h"

#include <locale>
#include <sstream>
#include <string>
#include <string_view>

namespace ovin {
namespace {

constexpr std::string_view hasShownGuideKey = "OvinHasShownGuide";

constexpr std::string_view arrangeWindowPreview = "OVIN_TEST_ARRANGE_WINDOW";

enum class Preview { none, arrangeWindow, about, guide };

/// The one window that the environment asks for.
Preview preview(const ProcessInfo& process) {
    if (process.environment(arrangeWindowPreview)) return Preview::arrangeWindow;
    if (process.environment("OVIN_TEST_ABOUT")) return Preview::about;
    if (process.environment("OVIN_TEST_GUIDE")) return Preview::guide;
    return Preview::none;
}

/// The decimal number that is the whole of `text`, in the notation of the C language whatever the user's language; 1 for any
/// other text.
double scaleIn(const std::string& text) {
    // Standard libraries differ in what else they take for a number: hexadecimal ones, infinity.
    if (text.find_first_not_of("0123456789+-.eE") != std::string::npos) return 1;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double scale = 1;
    stream >> std::noskipws >> scale;
    const bool isNumber = !stream.fail() && stream.peek() == std::istringstream::traits_type::eof();
    return isNumber ? scale : 1;
}

}  // namespace

AppDelegate::AppDelegate(const Platform& platform)
    : platform_(platform), widener_(platform), guide_(platform), about_(platform) {}

void AppDelegate::applicationDidFinishLaunching() {
    switch (preview(platform_.process)) {
        case Preview::arrangeWindow:
            return previewArrangeWindow();
        case Preview::about:
            return about_.show();
        case Preview::guide:
            return guide_.show(false,
                               [this] { control_ ? control_->startOrganizing() : platform_.application.terminate(); });
        case Preview::none:
            return start();
    }
}

void AppDelegate::start() {
    previewWindow_.reset();
    removeEarlierSettings();
    createObjects();
    updater_->start();
    // A widening that a crash has interrupted is undone here.
    arrange_->end();
    beginFirstTask();
}

void AppDelegate::applicationWillTerminate() {
    if (arrange_) arrange_->end();
}

void AppDelegate::openAgain() {
    if (control_) return perform(Command::showHiddenItems);
    if (isPreview(platform_.process)) start();
}

void AppDelegate::perform(Command command) {
    if (control_) control_->perform(command);
}

bool AppDelegate::isPreview(const ProcessInfo& process) { return preview(process) != Preview::none; }

void AppDelegate::previewArrangeWindow() {
    const auto quit = [&application = platform_.application] { application.terminate(); };
    ArrangeWindow& window = previewWindow_.emplace(platform_, quit);
    const std::string scale = platform_.process.environment(arrangeWindowPreview).value_or("");
    window.show(scaleIn(scale), !isSet("OVIN_TEST_NOFIT"));
    if (isSet("OVIN_TEST_CARD")) window.expandCard();
}

void AppDelegate::removeEarlierSettings() {
    for (const std::string_view key : {"OvinEngineState", "OvinVisibleSet", "OvinConcealMargin", "OvinRevealMargin",
                                       "OvinPendingTierReset", "OvinSpacerRotation", "OvinWidenDisplayWhileArranging"}) {
        // These settings are never read, so one that cannot be removed does no harm.
        (void)platform_.defaults.remove(key);
    }
}

void AppDelegate::createObjects() {
    updater_.emplace(platform_);
    panel_ = ItemsPanel::create(platform_);
    arrange_ = ArrangeSession::create(platform_, widener_);
    control_ = ControlItem::create(platform_, {*panel_, *arrange_, *updater_, widener_, guide_, about_});
}

void AppDelegate::beginFirstTask() {
    if (isSet("OVIN_TEST_UPDATE")) return updater_->checkForUpdates();
    if (isSet("OVIN_TEST_ORGANIZE")) return control_->startOrganizing();
    if (platform_.defaults.boolean(hasShownGuideKey)) return;
    // Recorded before the guide is shown, so that a guide that crashes the program does so only once.
    (void)platform_.defaults.set(hasShownGuideKey, true);
    control_->perform(Command::howThisWorks);
}

bool AppDelegate::isSet(std::string_view variable) const { return platform_.process.environment(variable).has_value(); }

}  // namespace ovin
