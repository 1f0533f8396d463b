#include "app/AppDelegate.h"

#include <locale>
#include <sstream>
#include <string>
#include <string_view>

namespace ovin {
namespace {

constexpr std::string_view hasShownGuideKey = "OvinHasShownGuide";

// Each asks for one window alone.
constexpr std::string_view arrangeWindowPreview = "OVIN_TEST_ARRANGE_WINDOW";
constexpr std::string_view aboutPreview = "OVIN_TEST_ABOUT";
constexpr std::string_view guidePreview = "OVIN_TEST_GUIDE";

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
    if (showPreview()) return;
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

void AppDelegate::openLedge() {
    if (control_) control_->openLedge();
}

bool AppDelegate::isPreview(const ProcessInfo& process) {
    for (const std::string_view variable : {arrangeWindowPreview, aboutPreview, guidePreview}) {
        if (process.environment(variable)) return true;
    }
    return false;
}

bool AppDelegate::showPreview() {
    if (const auto scale = platform_.process.environment(arrangeWindowPreview)) {
        previewArrangeWindow(*scale);
    } else if (isSet(aboutPreview)) {
        about_.show();
    } else if (isSet(guidePreview)) {
        guide_.show(false, [&application = platform_.application] { application.terminate(); });
    } else {
        return false;
    }
    return true;
}

void AppDelegate::previewArrangeWindow(const std::string& scale) {
    const auto quit = [&application = platform_.application] { application.terminate(); };
    ArrangeWindow& window = previewWindow_.emplace(platform_, quit);
    window.show(scaleIn(scale), !isSet("OVIN_TEST_NOFIT"));
    if (isSet("OVIN_TEST_CARD")) window.expandCard();
}

void AppDelegate::removeEarlierSettings() {
    for (const std::string_view key : {"OvinEngineState", "OvinVisibleSet", "OvinConcealMargin", "OvinRevealMargin",
                                       "OvinPendingTierReset", "OvinSpacerRotation", "OvinWidenDisplayWhileArranging"}) {
        // They are never read: one that cannot be removed does no harm.
        (void)platform_.defaults.remove(key);
    }
}

void AppDelegate::createObjects() {
    updater_ = std::make_shared<Updater>(platform_);
    panel_ = ItemsPanel::create(platform_);
    arrange_ = ArrangeSession::create(platform_, widener_);
    control_ = ControlItem::create(platform_, {panel_, arrange_, updater_, widener_, guide_, about_});
}

void AppDelegate::beginFirstTask() {
    if (isSet("OVIN_TEST_UPDATE")) return updater_->checkForUpdates();
    if (isSet("OVIN_TEST_ORGANIZE")) return control_->startOrganizing();
    if (platform_.defaults.boolean(hasShownGuideKey)) return;
    // Before it is shown, so that a guide that crashes the program does not do so at every launch.
    (void)platform_.defaults.set(hasShownGuideKey, true);
    control_->showGuide();
}

bool AppDelegate::isSet(std::string_view variable) const { return platform_.process.environment(variable).has_value(); }

}  // namespace ovin
