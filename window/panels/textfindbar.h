// A bar that finds in a text that is only read. What it finds is selected there.
#pragma once

#include "window/panels/findbar.h"

class QTextEdit;

namespace tarvo::window {

class TextFindBar : public FindBar {
public:
    // As FindBar's.
    TextFindBar(QTextEdit* text, const QString& hint, QWidget* parent, const QString& suffix);

protected:
    void search(const QString& text) override;
    std::size_t hitCount() const override { return m_hits.size(); }
    std::size_t firstFromHere() const override;
    std::size_t firstBehindHere() const override;
    void show(std::size_t hit) override;
    void unmark(bool) override {}

private:
    QTextEdit* m_pane;
    qsizetype m_length = 0;         // of the text that is looked for
    std::vector<qsizetype> m_hits;  // positions of their beginnings, ascending
};

}  // namespace tarvo::window
