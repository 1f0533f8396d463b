#include "info/AboutWindow.h"

#include <utility>

#include "info/AboutPage.h"

namespace ovin {

void AboutWindow::show() {
    if (!window_) make();
    platform_.application.activate();
    window_->show();
}

void AboutWindow::make() {
    AboutPage page = aboutPage(platform_.resources);
    window_ =
        platform_.windows.makeInformationWindow("About Ovin", page.content, [this, links = std::move(page.links)](int tag) {
            if (tag == AboutPage::doneTag) return window_->close();
            platform_.workspace.open(links.at(static_cast<std::size_t>(tag)));
        });
}

}  // namespace ovin
