#pragma once

#include <QLabel>

#include "platform/Views.h"
#include "platform/linux/drawing/TextLines.h"

namespace ovin {

/// A line of text or a paragraph. The toolkit's label, so that assistive programs know it as one. It draws its own lines,
/// because that label shows only one style, or mark-up, and looks up colours when it paints, so that they follow the
/// palette.
class LabelWidget final : public QLabel {
public:
    explicit LabelWidget(const Label& label);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    /// Only meaningful where lines wrap.
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] TextLines lines(std::optional<double> wrapWidth) const;

    const Label label_;
};

}  // namespace ovin
