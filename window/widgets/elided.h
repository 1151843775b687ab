// Fields for long paths: where one doesn't fit it is cut in the middle, because its end tells most,
// and the tooltip tells the whole. text() stays the whole, too.
#pragma once

#include <QLabel>
#include <QLineEdit>

namespace tarvo::window {

class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool fits() const;
};

// For reading only. With the keyboard in it shows the text as any field, to move in it.
class ElidedLineEdit : public QLineEdit {
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect textRect() const;
    bool fits() const;
};

}  // namespace tarvo::window
