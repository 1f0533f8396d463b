#pragma once

#include <QWidget>

#include "platform/Views.h"

namespace ovin {

/// A thin horizontal line.
class SeparatorWidget final : public QWidget {
public:
    explicit SeparatorWidget(const Separator& separator);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ovin
