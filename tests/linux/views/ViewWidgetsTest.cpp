#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLayout>
#include <QPixmap>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/ShownText.h"
#include "platform/linux/views/DisclosureWidget.h"
#include "platform/linux/views/ImageWidget.h"
#include "platform/linux/views/LabelWidget.h"
#include "platform/linux/views/MenuBackgroundWidget.h"
#include "platform/linux/views/PushButtonWidget.h"
#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/TextButtonWidget.h"
#include "platform/linux/views/UprightScroller.h"
#include "platform/linux/windows/QtWindows.h"
#include "tests/linux/views/ViewDifference.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

std::unique_ptr<QWidget> shown(
    const View& view, const std::function<void(int)>& clicked = [](int) {}) {
    std::unique_ptr<QWidget> widget(makeWidget(view, clicked));
    widget->resize(widget->sizeHint());
    widget->show();
    QCoreApplication::processEvents();
    return widget;
}

void press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&widget, &up);
}

const Image& icon() {
    static const Image image(std::make_shared<NamedIcon>("text-x-generic"));
    return image;
}

View paragraph(const std::string& text, double width, double lineSpacing = 0) {
    return {Label{{{text, Font{14}, {}}}, width, lineSpacing}};
}

double height(const View& view) { return QtWindows().fittingSize(view).height; }

TEST(ViewWidgets, NoTextIsCutOffInAPageOfParagraphs) {
    for (const View& view : {SamplePages::guide(icon(), 300), SamplePages::card(1, true), SamplePages::card(1.3, true),
                             SamplePages::everything(icon())}) {
        const auto widget = shown(view);
        int count = 0;
        for (QWidget* const child : widget->findChildren<QWidget*>()) {
            auto* const label = dynamic_cast<LabelWidget*>(child);
            if (label == nullptr || label->isHidden()) continue;
            ++count;
            EXPECT_EQ(label->height(),
                      label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height());
            EXPECT_GE(label->width(), label->sizeHint().width());
        }
        EXPECT_GE(count, 2);
    }
}

TEST(ViewWidgets, AColumnIsAsHighAsItsParagraphsAndTheSpaceBetweenThem) {
    const View one = paragraph("A paragraph that is so long that it needs some lines, however wide letters are.", 150, 3);
    EXPECT_EQ(height({SamplePages::column({one, one, one}, 12, {5, 0, 7, 0})}), 3 * height(one) + 2 * 12 + 5 + 7);
}

TEST(ViewWidgets, SpaceBetweenLinesIsAddedBetweenThemOnly) {
    EXPECT_EQ(height(paragraph("One line", 200, 10)), height(paragraph("One line", 200)));
    EXPECT_EQ(height(paragraph("Two\nlines", 200, 10)), height(paragraph("Two\nlines", 200)) + 10);
}

TEST(ViewWidgets, AWordThatIsWiderThanItsParagraphIsBroken) {
    EXPECT_GT(height(paragraph(std::string(100, 'W'), 100)), 2 * height(paragraph("W", 100)));
    EXPECT_EQ(QtWindows().fittingSize(paragraph(std::string(100, 'W'), 100)).width, 100);
}

TEST(ViewWidgets, HiddenViewsTakeNoRoomAndNoSpacing) {
    View first{Spacer{10}};
    View hidden{Spacer{20}, true, 30};
    const View last{Spacer{40}};
    EXPECT_EQ(height({SamplePages::column({first, hidden, last}, 5)}), 10 + 5 + 40);
    EXPECT_EQ(height({SamplePages::column({first, last, hidden}, 5)}), 10 + 5 + 40);
    first.spacingAfter = 7.0;
    EXPECT_EQ(height({SamplePages::column({first, hidden, last}, 5)}), 10 + 7 + 40);
    EXPECT_EQ(height({SamplePages::column({hidden}, 5, {1, 1, 1, 1})}), 2);
    EXPECT_EQ(QtWindows().fittingSize(hidden), Size{});
}

TEST(ViewWidgets, AFlexibleSpaceTakesWhatItsRowHasToSpare) {
    const auto widget = shown(SamplePages::row({{Separator{10}}, {FlexibleSpace{}}, {Separator{20}}}, 5, 100.0));
    EXPECT_EQ(widget->layout()->itemAt(0)->widget()->x(), 0);
    EXPECT_EQ(widget->layout()->itemAt(1)->widget()->width(), 100 - 10 - 20 - 2 * 5);
    EXPECT_EQ(widget->layout()->itemAt(2)->widget()->geometry().right(), 99);
}

TEST(ViewWidgets, ARowWithAFlexibleSpaceIsAsWideAsItsColumn) {
    const auto widget =
        shown({SamplePages::column({{Separator{200}}, SamplePages::row({{FlexibleSpace{}}, {Spacer{9}}})}, 0)});
    EXPECT_EQ(widget->layout()->itemAt(1)->widget()->width(), 200);
}

TEST(ViewWidgets, ViewsOfAColumnAreLeftOrCentred) {
    Stack stack = SamplePages::column({{Separator{100}}, {Separator{50}}}, 0);
    EXPECT_EQ(shown({stack})->layout()->itemAt(1)->widget()->x(), 0);
    stack.alignment = Stack::Alignment::center;
    EXPECT_EQ(shown({stack})->layout()->itemAt(1)->widget()->x(), 25);
}

TEST(ViewWidgets, TextIsNeverMarkUp) {
    const std::string text = "<b>bold</b> & &amp; <img src='x'>";
    const auto label = shown({Label{{{text, {}, {}}}, {}}});
    EXPECT_EQ(dynamic_cast<LabelWidget&>(*label).textFormat(), Qt::PlainText);
    const View escaped{Label{{{std::string(text.size(), 'i'), {}, {}}}, {}}};
    EXPECT_GT(label->width(), QtWindows().fittingSize(escaped).width);
    const auto button = shown({TextButton{{{text, {}, {}}}, text, true, 1}});
    EXPECT_EQ(button->toolTip().toStdString().find("<img"), std::string::npos);
    EXPECT_EQ(dynamic_cast<TextButtonWidget&>(*button).text().toStdString(), text);
}

TEST(ViewWidgets, ALongToolTipShowsItsEndsInOneLine) {
    const std::string text = "Start\n" + std::string(1'000'000, 'W') + " end";
    const auto button = shown({TextButton{{{"A", {}, {}}}, text, true, 1}});
    EXPECT_LT(button->toolTip().size(), 250);
    EXPECT_TRUE(button->toolTip().startsWith("<span>Start W"));
    EXPECT_TRUE(button->toolTip().endsWith(" end</span>"));
}

TEST(ViewWidgets, ALongTextIsCutBetweenCharacters) {
    const QString text = "a" + QString::fromUtf8("😀").repeated(200);
    const QString shown = shownText(text);
    EXPECT_LE(shown.size(), 200);
    EXPECT_TRUE(shown.isValidUtf16());
    EXPECT_EQ(shownText(text.mid(1)).isValidUtf16(), true);
}

TEST(ViewWidgets, AnAmpersandInATitleIsNoShortcut) {
    const auto button = shown({PushButton{"Save & &Quit", {}, KeyEquivalent::none, false, {}, 1}});
    EXPECT_TRUE(dynamic_cast<PushButtonWidget&>(*button).shortcut().isEmpty());
}

TEST(ViewWidgets, ThePointerIsAHandOverTheWholeOfALinkAndNowhereElse) {
    const View link{TextButton{{{"site.example ↗", Font{17}, {}, true}}, "https://site.example/", true, 1}};
    const View text{TextButton{{{"How does this work?", Font{13}, {}}}, "", false, 2}};
    Stack column;
    column.insets = {10, 10, 10, 10};
    column.views = {link, text};
    const auto page = shown({column});
    int links = 0;
    for (const auto* button : page->findChildren<TextButtonWidget*>()) {
        const bool isLink = button->tag() == 1;
        links += isLink ? 1 : 0;
        const QRect bounds = button->geometry();
        EXPECT_EQ(bounds.size(), button->sizeHint());
        for (const QPoint corner : {bounds.topLeft(), bounds.topRight(), bounds.bottomLeft(), bounds.bottomRight()}) {
            const QWidget* const under = page->childAt(corner);
            EXPECT_EQ(under, button);
            EXPECT_EQ(under->cursor().shape() == Qt::PointingHandCursor, isLink);
        }
    }
    EXPECT_EQ(links, 1);
    EXPECT_NE(page->cursor().shape(), Qt::PointingHandCursor);
}

TEST(ViewWidgets, SpaceAndReturnPressEveryButtonOfAPage) {
    for (const View& view :
         {View{PushButton{"A", {}, KeyEquivalent::none, false, {}, 7}}, View{DisclosureTriangle{false, {13}, "A", 7}},
          View{TextButton{{{"A", {}, {}}}, "", true, 7}}}) {
        std::vector<int> clicks;
        const auto widget = shown(view, [&](int tag) { clicks.push_back(tag); });
        press(*widget, Qt::Key_Space);
        press(*widget, Qt::Key_Return);
        press(*widget, Qt::Key_Enter);
        press(*widget, Qt::Key_A);
        press(*widget, Qt::Key_Escape);
        QCoreApplication::processEvents();
        EXPECT_EQ(clicks, std::vector<int>(3, 7));
    }
}

TEST(ViewWidgets, ATriangleIsTurnedByItsDescriptionAndNotByTheClick) {
    const View view{DisclosureTriangle{false, {13}, "Details", 1}};
    const auto widget = shown(view);
    dynamic_cast<QAbstractButton&>(*widget).click();
    EXPECT_EQ(differences(*widget, view), std::vector<std::string>());
}

TEST(ViewWidgets, APageScrollsByItsKeysFromWhereverTheKeyboardIs) {
    const auto widget = shown(SamplePages::guide(icon(), 300));
    auto* const scroller = dynamic_cast<UprightScroller*>(widget->layout()->itemAt(0)->widget());
    ASSERT_NE(scroller, nullptr);
    QScrollBar& bar = *scroller->verticalScrollBar();
    ASSERT_GT(bar.maximum(), 300);
    const auto after = [&](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        press(*scroller->widget(), key, modifiers);
        return bar.value();
    };
    EXPECT_EQ(after(Qt::Key_End), bar.maximum());
    EXPECT_EQ(after(Qt::Key_Home), 0);
    EXPECT_EQ(after(Qt::Key_PageDown), bar.pageStep());
    EXPECT_EQ(after(Qt::Key_Space), 2 * bar.pageStep());
    EXPECT_EQ(after(Qt::Key_Space, Qt::ShiftModifier), bar.pageStep());
    EXPECT_EQ(after(Qt::Key_PageUp), 0);
    EXPECT_EQ(after(Qt::Key_Down), bar.singleStep());
    EXPECT_EQ(after(Qt::Key_Up), 0);
}

TEST(ViewWidgets, AScrollerHidesWhenAllOfThePageIsSeen) {
    const auto scrollerOf = [](double length) {
        const auto content = std::make_shared<const View>(View{Spacer{length}});
        return shown({ScrollView{{80, 100}, content, Stack::Orientation::vertical}});
    };
    const auto isSeen = [](const QWidget& widget) {
        return widget.findChild<QScrollBar*>(QString(), Qt::FindDirectChildrenOnly)->isVisible();
    };
    EXPECT_FALSE(isSeen(*scrollerOf(100)));
    EXPECT_TRUE(isSeen(*scrollerOf(101)));
    EXPECT_EQ(scrollerOf(100)->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(scrollerOf(101)->focusPolicy(), Qt::StrongFocus);
}

QColor cornerAfterChangeTo(QPalette palette, Box box) {
    Stack stack = SamplePages::column({{Separator{20}}, {Spacer{20}}}, 0);
    stack.box = box;
    const auto widget = shown({stack});
    widget->setPalette(palette);
    return widget->grab().toImage().pixelColor(1, 15);
}

TEST(ViewWidgets, ABoxFollowsTheColoursOfTheDesktop) {
    const Box box{{SystemColor::label}, {SystemColor::clear}, 0, 0};
    EXPECT_EQ(cornerAfterChangeTo(QPalette(Qt::black), box), QColor(Qt::white));
    EXPECT_EQ(cornerAfterChangeTo(QPalette(Qt::white), box), QColor(Qt::black));
}

TEST(ViewWidgets, TextOnTheAccentColourIsReadable) {
    EXPECT_EQ(readableOn(Qt::black), QColor(Qt::white));
    EXPECT_EQ(readableOn(QColor(48, 140, 198)), QColor(Qt::white));
    EXPECT_EQ(readableOn(Qt::yellow), QColor(Qt::black));
}

double luminance(const QColor& color) {
    const auto linear = [](double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// What is seen of a color with an opacity.
QColor over(const QColor& color, const QColor& below) {
    const auto mixed = [&](float one, float other) { return one * color.alphaF() + other * (1 - color.alphaF()); };
    return QColor::fromRgbF(mixed(color.redF(), below.redF()), mixed(color.greenF(), below.greenF()),
                            mixed(color.blueF(), below.blueF()));
}

TEST(ViewWidgets, SmallTextHasEnoughContrastOnEveryAccentAndInEveryColourOfItsOwn) {
    constexpr double enough = 4.5;
    for (int hue = 0; hue < 360; hue += 15) {
        for (const int value : {40, 120, 200, 255}) {
            const QColor accent = QColor::fromHsv(hue, 200, value);
            EXPECT_GE(contrast(readableOn(behindText(accent)), behindText(accent)), enough) << accent.name().toStdString();
        }
    }
    for (const QColor& window : {QColor(239, 239, 239), QColor(255, 255, 255), QColor(42, 46, 50), QColor(27, 30, 32)}) {
        QPalette palette(window);
        palette.setColor(QPalette::WindowText, luminance(window) > 0.5 ? Qt::black : QColor(239, 240, 241));
        palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
        for (const SystemColor color :
             {SystemColor::label, SystemColor::secondaryLabel, SystemColor::controlAccent, SystemColor::systemOrange}) {
            EXPECT_GE(contrast(over(qtColor({color}, palette), window), window), enough)
                << window.name().toStdString() << " " << static_cast<int>(color);
        }
    }
}

TEST(ViewWidgets, APictureFillsItsPlaceAlsoWhereItsHeightIsNoWholeNumberOfPoints) {
    QPixmap red(832, 120);
    red.fill(Qt::red);
    const QString path = QDir::tempPath() + "/ovin-strip.png";
    ASSERT_TRUE(red.save(path));
    const Image image(std::make_shared<NamedIcon>(path.toStdString()));
    const QImage seen = shown({ImageView{image, {412, 412.0 * 120 / 832}, 0, ""}})->grab().toImage();
    QFile::remove(path);
    EXPECT_EQ(seen.size(), QSize(412, 59));
    for (const QPoint corner : {QPoint(0, 0), QPoint(411, 0), QPoint(0, 58), QPoint(411, 58)})
        EXPECT_EQ(seen.pixelColor(corner), QColor(Qt::red)) << corner.x() << " " << corner.y();
}

TEST(ViewWidgets, PicturesKeepTheirProportionsAndLoseTheirCorners) {
    QPixmap red(100, 50);
    red.fill(Qt::red);
    const QString path = QDir::tempPath() + "/ovin-wide-picture.png";
    ASSERT_TRUE(red.save(path));
    const Image image(std::make_shared<NamedIcon>(path.toStdString()));
    const QImage seen = shown({ImageView{image, {60, 60}, 8, ""}})->grab().toImage();
    QFile::remove(path);
    EXPECT_EQ(seen.pixelColor(30, 30), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(1, 30), QColor(Qt::red));
    EXPECT_NE(seen.pixelColor(30, 13), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(30, 16), QColor(Qt::red));
    EXPECT_NE(seen.pixelColor(0, 15), QColor(Qt::red));
}

QAccessibleInterface& accessible(QWidget& widget) { return *QAccessible::queryAccessibleInterface(&widget); }

TEST(ViewWidgets, AssistiveProgramsKnowWhatEverythingIs) {
    const auto triangle = shown({DisclosureTriangle{true, {13}, "Details", 1}});
    EXPECT_EQ(accessible(*triangle).text(QAccessible::Name), "Details");
    EXPECT_EQ(accessible(*triangle).role(), QAccessible::Button);
    EXPECT_TRUE(accessible(*triangle).state().expanded);
    EXPECT_TRUE(accessible(*triangle).state().checked);
    const auto link = shown({TextButton{{{"Web ", {}, {}}, {"site", Font{17}, {}}}, "", true, 1}});
    EXPECT_EQ(accessible(*link).text(QAccessible::Name), "Web site");
    EXPECT_EQ(accessible(*link).role(), QAccessible::Link);
    const auto button = shown({PushButton{"Done", {}, KeyEquivalent::none, false, {}, 1}});
    EXPECT_EQ(accessible(*button).text(QAccessible::Name), "Done");
    const auto label = shown({Label{{{"A ", {}, {}}, {"label", Font{17}, {}}}, {}}});
    EXPECT_EQ(accessible(*label).text(QAccessible::Name), "A label");
    EXPECT_EQ(accessible(*label).role(), QAccessible::StaticText);
    const auto picture = shown({ImageView{icon(), {20, 20}, 0, "Icon"}});
    EXPECT_EQ(accessible(*picture).role(), QAccessible::Graphic);
    EXPECT_EQ(accessible(*picture).text(QAccessible::Name), "Icon");
}

TEST(ViewWidgets, AssistiveProgramsPressEveryButton) {
    for (const View& view :
         {View{TextButton{{{"A", {}, {}}}, "", true, 7}}, View{DisclosureTriangle{false, {13}, "A", 7}}}) {
        int clicked = 0;
        const auto widget = shown(view, [&](int tag) { clicked = tag; });
        QAccessibleActionInterface* const actions = accessible(*widget).actionInterface();
        ASSERT_NE(actions, nullptr);
        EXPECT_EQ(actions->actionNames().front(), QAccessibleActionInterface::pressAction());
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
        EXPECT_EQ(clicked, 7);
    }
}

/// A menu's background of 60 by 40 with corners of 10, in a window that lets through what is below it, or not.
QImage menuBackground(bool isTranslucent) {
    const std::unique_ptr<QWidget> widget(
        makeWidget({MenuBackground{10, std::make_shared<const View>(View{Spacer{}})}}, [](int) {}));
    widget->setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
    widget->resize(60, 40);
    QImage seen(widget->size(), QImage::Format_ARGB32_Premultiplied);
    seen.fill(Qt::transparent);
    widget->render(&seen, {}, {}, QWidget::DrawChildren);
    return seen;
}

TEST(MenuBackgroundWidget, ItsEdgeIsAsThickAtEverySideWhereAPointHasOneAndAHalfPixels) {
    const std::unique_ptr<QWidget> widget(
        makeWidget({MenuBackground{10, std::make_shared<const View>(View{Spacer{}})}}, [](int) {}));
    for (const QSize size : {QSize(60, 40), QSize(61, 41)}) {
        widget->resize(size);
        QImage seen(size * 1.5, QImage::Format_ARGB32_Premultiplied);
        seen.setDevicePixelRatio(1.5);
        seen.fill(Qt::transparent);
        widget->render(&seen, {}, {}, QWidget::DrawChildren);
        const int right = seen.width() - 1;
        const int below = seen.height() - 1;
        const QPoint middle = seen.rect().center();
        const QColor edge = seen.pixelColor(middle.x(), 0);
        const QColor fill = seen.pixelColor(middle);
        ASSERT_NE(edge, fill);
        for (const QPoint place : {QPoint(middle.x(), below), QPoint(0, middle.y()), QPoint(right, middle.y())})
            EXPECT_EQ(seen.pixelColor(place), edge) << place.x() << ", " << place.y();
        for (const QPoint place :
             {QPoint(middle.x(), 1), QPoint(middle.x(), below - 1), QPoint(1, middle.y()), QPoint(right - 1, middle.y())})
            EXPECT_EQ(seen.pixelColor(place), fill) << place.x() << ", " << place.y();
    }
}

TEST(MenuBackgroundWidget, ItsEdgeIsOpaqueAllTheWayRound) {
    const QImage seen = menuBackground(true);
    EXPECT_EQ(seen.pixelColor(30, 0).alpha(), 255);
    // It lies within the circle of the corner, with its outermost point 0.1 from the edge's outer side: it is opaque but for
    // what smoothing takes.
    for (const QPoint place : {QPoint(3, 3), QPoint(56, 3), QPoint(3, 36), QPoint(56, 36)}) {
        EXPECT_GT(seen.pixelColor(place).alpha(), 235) << place.x() << ", " << place.y();
    }
    EXPECT_EQ(seen.pixelColor(0, 0).alpha(), 0);
}

TEST(MenuBackgroundWidget, InAnOpaqueWindowTheOutermostPixelsOfItsShapeAreTheEdgeInEachCorner) {
    const QImage seen = menuBackground(false);
    const QColor edge = seen.pixelColor(30, 0);
    const QColor fill = seen.pixelColor(30, 20);
    ASSERT_GT(std::abs(edge.red() - fill.red()), 20);
    const QRegion shape = roundedRegion(seen.rect(), 10, Coverage::middle);
    EXPECT_FALSE(shape.contains(QPoint(2, 2)));
    EXPECT_TRUE(shape.contains(QPoint(3, 3)));
    for (int y = 0; y < seen.height(); ++y) {
        int inset = 0;
        while (!shape.contains(QPoint(inset, y))) ++inset;
        for (const int x : {inset, seen.width() - 1 - inset}) {
            const int red = seen.pixelColor(x, y).red();
            EXPECT_LT(std::abs(red - edge.red()), std::abs(red - fill.red())) << x << ", " << y;
        }
    }
}

TEST(MenuBackgroundWidget, ItsShapeIsTheSameInEachCornerAndHoldsAllThatTheOutlineTouchesWhereItIsToBeSmooth) {
    const QRect rect(0, 0, 60, 40);
    const auto mirrored = [&](const QRegion& region) {
        QRegion result;
        for (const QRect& part : region) result += QRect(59 - part.right(), 39 - part.bottom(), part.width(), part.height());
        return result;
    };
    const QRegion middle = roundedRegion(rect, 10, Coverage::middle);
    const QRegion touched = roundedRegion(rect, 10, Coverage::touch);
    EXPECT_EQ(mirrored(middle), middle);
    EXPECT_EQ(mirrored(touched), touched);
    EXPECT_TRUE((middle - touched).isEmpty());
    const QImage smooth = menuBackground(true);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 60; ++x) {
            EXPECT_TRUE(smooth.pixelColor(x, y).alpha() == 0 || touched.contains(QPoint(x, y))) << x << ", " << y;
        }
    }
}

}  // namespace
}  // namespace ovin
