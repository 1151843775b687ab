// The point index in numbers, level by level.
#pragma once

#include "qrb/queries.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <cstdint>
#include <vector>

namespace tarvo::window {

class DialogIndexStatistics : public QDialog {
    Q_OBJECT

public:
    DialogIndexStatistics(const qrb::pointcloud::IndexNode& root, QWidget* parent);
    ~DialogIndexStatistics() override;

    struct Level {
        std::int64_t leafPoints = 0;
        std::int64_t nodePoints = 0;
        std::int64_t leaves = 0;
        std::int64_t nodes = 0;
    };
    // By level, that of the root first; empty for an absent root.
    static std::vector<Level> levels(const qrb::pointcloud::IndexNode& root);

private:
    DialogSettings m_settings;
};

}  // namespace tarvo::window
