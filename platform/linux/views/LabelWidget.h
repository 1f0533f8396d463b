#pragma once

#include <QLabel>

#include "platform/Views.h"
#include "platform/linux/drawing/TextLines.h"

namespace ovin {

/// A line of text or a paragraph. The toolkit's label, so that assistive programs read it as one, with lines of its own:
/// that label knows text of one kind only, or mark-up. Colours are looked up when it is painted, and so follow the palette.
class LabelWidget final : public QLabel {
public:
    explicit LabelWidget(const Label& label);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    /// Meaningful where lines wrap.
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] TextLines lines(std::optional<double> wrapWidth) const;

    const Label label_;
};

}  // namespace ovin
