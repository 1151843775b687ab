// The text pane of what a plugin prints while it runs.
#pragma once

#include <QPlainTextEdit>

namespace tarvo::window {

class OutputPane : public QPlainTextEdit {
    Q_OBJECT

public:
    // Of what was added the last so many characters are kept.
    static constexpr int keptCharacters = 2'000'000;

    explicit OutputPane(QWidget* parent = nullptr);

    // Stays at the end of the text where that is shown.
    void add(const QString& text);

private:
    void forgetBeginning();
};

}  // namespace tarvo::window
