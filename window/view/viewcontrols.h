// The fields of the view: what colours mean, which points are seen, how large, on which ground.
#pragma once

#include "view/stream.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace tarvo::window {

enum class FilterUse { OFF, HIDE, FADE };
enum class Ground { THEME, LIGHT, DARK };

class ViewControls : public QWidget {
    Q_OBJECT

public:
    // As they were set last.
    explicit ViewControls(QWidget* parent);

    // What the database allows. The colours that were chosen last, here or in another database, are
    // chosen again where it has them.
    void setChoices(const view::StreamScene& scene);
    // What is behind the empty fields of the range; not a ramp: there are none to be filled.
    void setRange(const view::Colouring& colouring);
    void clear();

    // None: the best one.
    std::optional<view::ColourChoice> colour() const;
    FilterUse filterUse() const;
    Ground ground() const;
    int pointSize() const;  // pixels

signals:
    void colourChanged();
    void filterUseChanged();
    void groundChanged();
    void pointSizeChanged(int pixels);

private:
    void addRow(const QList<QWidget*>& widgets, const QString& label, QWidget* buddy);
    void createColour();
    void createLook();
    void keep(const QString& key, const QVariant& value);

    QComboBox* m_colour;
    QLineEdit* m_low;
    QLineEdit* m_high;
    QComboBox* m_filter;
    QSpinBox* m_size;
    QComboBox* m_ground;
    std::vector<view::ColourChoice> m_choices;
    drawing::Range m_usual;  // by the statistics
};

}  // namespace tarvo::window
