#pragma once

#include <QElapsedTimer>
#include <QPixmap>
#include <memory>
#include <optional>

#include "platform/Views.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/drawing/TextLines.h"
#include "platform/linux/views/PressButton.h"

namespace ovin {

/// A button of the ledge: no border until the pointer is over it, an image, a title, or both beside one another.
class ItemButton final : public PressButton {
    Q_OBJECT

public:
    explicit ItemButton(const Button& button);
    ~ItemButton() override;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int contentWidth() const;
    [[nodiscard]] TextLines title() const;
    void drawImage(QPainter& painter, const QRect& place);
    void takeIcon(bool readsAgain);
    void showLoaded();

    const AttributedText title_;
    const Button::ImagePosition imagePosition_;
    std::optional<Image> image_;
    /// Of the item's program; null where the image is no item's.
    std::shared_ptr<LatestItemIcon> itemIcon_;
    /// What is known of the image, for this many pixels to a side. Initials stand for one that does not come soon.
    QPixmap picture_;
    /// 0 when it is to be asked for again.
    int pictureSide_ = 0;
    /// The item's icon when the picture was asked for.
    std::shared_ptr<const ItemIcon> pictured_;
    QElapsedTimer asked_;
    /// Kept because layouts ask for sizes again and again, and laying out a text costs more than all the rest of a button.
    /// Empty where no title is shown.
    QSize titleSize_;
};

}  // namespace ovin
