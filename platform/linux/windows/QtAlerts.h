#pragma once

#include <QPointer>
#include <vector>

#include "platform/Alerts.h"

class QMessageBox;

namespace ovin {

/// Alerts as Qt's message boxes. `run` returns at once; the program's other windows can be used meanwhile. Several boxes are
/// shown one above the other; where one says the same already, that one comes to the front. Destroying this object closes
/// them; it must not outlive the Qt program.
class QtAlerts final : public Alerts {
public:
    QtAlerts() = default;
    QtAlerts(const QtAlerts&) = delete;
    QtAlerts& operator=(const QtAlerts&) = delete;
    ~QtAlerts() override;

    void run(const Alert& alert) override;

private:
    struct Shown {
        Alert alert;
        QPointer<QMessageBox> box;
    };

    std::vector<Shown> shown_;
};

}  // namespace ovin
