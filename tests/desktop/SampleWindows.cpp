// Shows windows on a desktop, as its standard input says, and tells on its standard output what the user did to them. For
// tests that look at them from outside, and for people who want to see them:
//
//     guide | about | everything    makes and shows an information window; again, shows the same one
//     close NAME | end NAME | drop NAME
//     card [X Y] | expand [SCALE] | drop card
//     alert TEXT
//     dark | light                  changes the colours of the program
//     sync                          answers once the X server has been told everything

#include <QApplication>
#include <QPalette>
#include <QSocketNotifier>
#include <QStringList>
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/drawing/QtResources.h"
#include "platform/linux/windows/QtAlerts.h"
#include "platform/linux/windows/QtWindows.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

class Samples {
public:
    void obey(const QStringList& words) {
        const QString& verb = words.front();
        const QString name = words.value(1);
        if (verb == "guide" || verb == "about" || verb == "everything") return showPage(verb.toStdString());
        if (verb == "card") return showCard(words);
        if (verb == "expand") return expandCard(words.size() > 1 ? name.toDouble() : 1);
        if (verb == "close") return pages_.at(name.toStdString())->close();
        if (verb == "end") return pages_.at(name.toStdString())->scrollToEnd();
        if (verb == "drop") return drop(name.toStdString());
        if (verb == "alert") return alerts_.run({name.toStdString(), words.mid(2).join(' ').toStdString()});
        if (verb == "dark" || verb == "light") return QApplication::setPalette(palette(verb == "dark"));
        if (verb == "sync") return QGuiApplication::sync(), say("synced");
        if (verb == "quit") return QCoreApplication::quit();
        say("what?");
    }

private:
    static QPalette palette(bool isDark) {
        QPalette palette(isDark ? QColor(42, 46, 50) : QColor(239, 240, 241));
        palette.setColor(QPalette::Highlight, QColor(61, 120, 180));
        return palette;
    }

    View content(const std::string& name) const {
        const Image icon = resources_.applicationIcon();
        if (name == "guide") return SamplePages::guide(icon, 520);
        return name == "about" ? SamplePages::about(icon) : SamplePages::everything(icon);
    }

    void showPage(const std::string& name) {
        if (pages_.count(name) == 0) {
            pages_[name] = windows_.makeInformationWindow("Sample " + name, content(name),
                                                          [this, name](int tag) { clicked(name, tag); });
        }
        pages_[name]->show();
        say("shown " + name);
    }

    /// As programs do: what closes a window may also destroy it.
    void clicked(const std::string& name, int tag) {
        say("clicked " + name + " " + std::to_string(tag));
        if (tag == SamplePages::done) drop(name);
    }

    void showCard(const QStringList& words) {
        if (!card_) {
            card_ = windows_.makeFloatingPanel(
                "Sample card",
                [this](int tag) {
                    say("clicked card " + std::to_string(tag));
                    if (tag == SamplePages::disclose) expandCard(1);
                    if (tag == SamplePages::done) card_.reset();
                },
                [this] {
                    say("closed card");
                    card_.reset();
                });
        }
        FloatingPanel::Placement placement;
        if (words.size() > 2) {
            placement = [origin = Point{words[1].toDouble(), words[2].toDouble()}](Size) { return origin; };
        }
        card_->show(SamplePages::card(1, isExpanded_), placement);
        say("shown card");
    }

    void expandCard(double scale) {
        isExpanded_ = !isExpanded_;
        card_->replace(SamplePages::card(scale, isExpanded_));
        say("replaced card");
    }

    void drop(const std::string& name) {
        if (name == "card") {
            card_.reset();
        } else {
            pages_.erase(name);
        }
        say("dropped " + name);
    }

    QtResources resources_;
    QtWindows windows_;
    QtAlerts alerts_;
    std::map<std::string, std::unique_ptr<InformationWindow>> pages_;
    std::unique_ptr<FloatingPanel> card_;
    bool isExpanded_ = false;
};

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    QCoreApplication::setApplicationName("sample-windows");
    QGuiApplication::setQuitOnLastWindowClosed(false);
    std::ios::sync_with_stdio(false);
    ovin::Samples samples;
    const QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&samples] {
        do {
            std::string line;
            if (!std::getline(std::cin, line)) return QCoreApplication::quit();
            const QStringList words = QString::fromStdString(line).split(' ', Qt::SkipEmptyParts);
            if (!words.isEmpty()) samples.obey(words);
        } while (std::cin.rdbuf()->in_avail() > 0);
    });
    ovin::say("ready");
    return QCoreApplication::exec();
}
