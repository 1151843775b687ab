// A field for a number that keeps its digits: what was set comes back bit for bit unless the user
// changes the text. Up and Down change the number by a step, with Ctrl by ten.
#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

namespace tarvo::window {

class NumberEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit NumberEdit(QWidget* parent = nullptr);

    void setNumber(double number);
    // Nothing where the text is no finite number, unless it is still the one that was set.
    std::optional<double> number() const;

    // Asked at each step. Where there is none or it is no positive number, the step is one unit of
    // the number's last digit.
    void setStep(std::function<std::optional<double>()> step);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    double m_set = 0;
    QString m_setText;
    std::function<std::optional<double>()> m_step;
};

}  // namespace tarvo::window
