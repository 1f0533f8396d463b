#include "platform/Words.h"

#include "platform/Deployment.h"

namespace ovin {
namespace {

using Kind = GuidePiece::Kind;

/// What a build that looks for updates says of that.
std::string dailyCheck() {
    if (deployment::feedURL.empty()) return {};
    return " Once a day it checks " + std::string(deployment::siteDomain) + " for a newer version, and installs nothing.";
}

}  // namespace

const Words& macWords() {
    static const Words words{
        {
            {Kind::heading, "Your menu bar is full."},
            {Kind::paragraph,
             "macOS 27 draws as many menu bar icons as it can fit, starting from the clock, and tucks the rest behind a "
             "little « on the left."},
            {Kind::picture, "Collapsed: only the icons that fit.", "explainer-collapsed"},
            {Kind::paragraph,
             "Click the « and the extras appear over your app’s menus, as many as your screen has room for."},
            {Kind::picture, "Expanded: the rest, if there’s space. Often there isn’t.", "explainer-expanded"},
            {Kind::paragraph,
             "With enough icons, some are left over entirely. They’re still running; you just can’t see them, click them, "
             "or "
             "drag them anywhere. Rather like a sock behind the radiator."},
            {Kind::heading, "Why Ovin doesn’t hide or move icons."},
            {Kind::paragraph,
             "Menu bar managers used to shuffle icons about behind the scenes, hiding some and promoting others. In macOS "
             "27, Apple rebuilt the menu bar, and those tricks no longer work reliably."},
            {Kind::paragraph,
             "We’d rather not promise what macOS won’t let us keep. So Ovin does the two things that do work, and does them "
             "properly."},
            {Kind::heading, "The ledge."},
            {Kind::paragraph,
             "**Click Ovin’s icon** and every icon macOS couldn’t fit lines up in a row underneath the menu bar. Click one "
             "and its menu opens, as if it had been in the bar all along."},
            {Kind::paragraph, "Click Ovin again, or anywhere else, to put the ledge away."},
            {Kind::heading, "Deciding who gets the good seats."},
            {Kind::paragraph,
             "macOS keeps the icons nearest the clock and lets the leftmost ones spill over, so the order of your icons "
             "decides which stay in view. You’d normally **⌘-drag** them into order, but you can’t drag what you can’t see. "
             "So:"},
            {Kind::paragraph,
             "**1.** Choose **Organize Menu Bar…** from Ovin’s menu. Ovin switches your display to a higher resolution, "
             "which gives the menu bar room to draw every icon. Everything gets smaller for a moment. That’s expected, and "
             "temporary."},
            {Kind::paragraph,
             "**2.** Hold **⌘** and drag your favourites towards the clock. Drag the ones you can live without to the "
             "left."},
            {Kind::paragraph,
             "**3.** Click **Done**. Your usual resolution comes back, and your new order stays put. Anything that still "
             "doesn’t fit is waiting on the ledge."},
            {Kind::heading, "Good manners."},
            {Kind::paragraph,
             "Ovin needs one permission, **Accessibility**, to find the icons macOS isn’t drawing and to open their menus "
             "for "
             "you. It doesn’t record your screen, never moves or clicks anything on its own, and collects nothing about "
             "you. "
             "Once a day it checks " +
                 std::string(deployment::siteDomain) + " for a newer version, and asks before installing one."},
            {Kind::paragraph,
             "If Ovin is interrupted while organizing, it puts your resolution back the next time it opens."},
            {Kind::closing, "Control-click Ovin’s icon for its menu. This page lives there too, under How This Works."},
        },
        "macOS 27 changed how the menu bar works, which broke the approach used by menu bar managers like Ice and "
        "Bartender. "
        "Ovin takes a simpler approach: it temporarily switches your display resolution so you can see every item and "
        "⌘-drag "
        "them into order.",
        "macOS 27 adds an expander («) to the menu bar. Collapsed, it shows as many items as fit.",
        "Expanded, it shows the rest over the app menus. Unfortunately, the rest may not all fit on your screen.",
        "Ovin increases the screen resolution so you can temporarily see all of your items and ⌘-drag them into your "
        "preferred "
        "priority. Back at your normal resolution some will still overflow to the left, but they’ll be your lowest-priority "
        "items.",
        "All of your menu bar items are drawn at this resolution. Hold ⌘ and drag them into the order you "
        "want.",
        "Your displays are mirrored, and mirrored displays change resolution together. Turn "
        "mirroring off in System Settings → Displays, then try again.",
        "macOS refused the resolution change. Nothing was altered.",
        {},
        std::nullopt,
        "Every item fits in the menu bar",
    };
    return words;
}

const Words& desktopWords() {
    static const Words words{
        {
            {Kind::heading, "Some icons are out of sight."},
            {Kind::paragraph,
             "Programs that run all the time put small icons into your desktop’s bar. A bar with little room leaves some of "
             "them out, others hide those that are rarely used, and some desktops have no place for them at all."},
            {Kind::paragraph,
             "Those programs are still running; you just can’t see their icons or click them. Rather like a sock behind the "
             "radiator."},
            {Kind::heading, "Why Ovin doesn’t hide or move icons."},
            {Kind::paragraph,
             "Which icons your bar draws, and where, is up to your bar and you. Ovin doesn’t take your bar’s place and "
             "changes none of its settings."},
            {Kind::heading, "The ledge."},
            {Kind::paragraph,
             "**Click Ovin’s icon** and every icon that your bar isn’t drawing lines up in a row beside it. Click one, and "
             "it does what it would do in the bar. **Right-click** one, and its menu opens. Where your bar answers a click "
             "on Ovin’s icon with its menu, choose **Show Hidden Items** there."},
            {Kind::paragraph,
             "Without a bar, start Ovin a second time, or give its command a keyboard shortcut, and the ledge opens. There "
             "it ends with a button for Ovin’s own menu."},
            {Kind::paragraph, "Click Ovin again, or anywhere else, to put the ledge away."},
            {Kind::heading, "Deciding who gets the good seats."},
            {Kind::paragraph,
             "If your bar says where it draws each icon, Ovin can give it more room for a while, so that you can drag the "
             "icons into the order you want:"},
            {Kind::paragraph,
             "**1.** Choose **Organize Menu Bar…** from Ovin’s menu. Ovin switches your display to a higher resolution, "
             "which gives the bar room to draw every icon. Everything gets smaller for a moment. That’s expected, and "
             "temporary."},
            {Kind::paragraph, "**2.** Drag your icons into order, as your bar lets you."},
            {Kind::paragraph,
             "**3.** Click **Done**. Your usual resolution comes back. Anything that still doesn’t fit is waiting on the "
             "ledge."},
            {Kind::paragraph, "Few bars say so. With the others Ovin leaves your display alone and tells you why."},
            {Kind::heading, "Good manners."},
            {Kind::paragraph,
             "Programs announce their icons on your session’s bus, and that is where Ovin finds them. Only where a bar can "
             "be read through the desktop’s accessibility service does Ovin ask to use it. It doesn’t record your screen, "
             "never moves or clicks anything on its own, and collects nothing about you." +
                 dailyCheck()},
            {Kind::paragraph,
             "If Ovin is interrupted while organizing, it puts your resolution back the next time it opens."},
            {Kind::closing, "Right-click Ovin’s icon for its menu. This page lives there too, under How This Works."},
        },
        "Your display has more room for a while, so that your bar can draw every icon. Drag the icons into the order you "
        "want, as your bar lets you.",
        {},
        {},
        "Ovin has switched your display to a higher resolution, which makes everything smaller. Back at your usual "
        "resolution some icons may be left out again; they wait on Ovin’s ledge.",
        "Your bar draws every icon at this resolution. Drag them into the order you want.",
        "Your displays are mirrored, and mirrored displays change resolution together. Turn mirroring off in your desktop’s "
        "display settings, then try again.",
        "The resolution could not be changed. Nothing was altered.",
        "Displays can’t be widened in a Wayland session, or on an X server without RandR. Nothing was altered.",
        "Ovin can’t see where your bar draws its icons, so it can’t tell whether a wider display would help. Nothing was "
        "altered.",
        "No icon is out of sight",
    };
    return words;
}

}  // namespace ovin
