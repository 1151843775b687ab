#include "window/panels/filterhelp.h"

#include "core/nodelist.h"
#include "window/common/aside.h"
#include "window/common/filterhistory.h"
#include "window/common/guard.h"
#include "window/common/theme.h"
#include "window/dialogs/checklabel.h"
#include "window/dialogs/filterinsertmenu.h"
#include "window/panels/indexsearch.h"
#include "window/widgets/filtercompletion.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTextCharFormat>
#include <QToolButton>
#include <algorithm>
#include <limits>

namespace tarvo::window {

namespace {

constexpr int pause = 300;  // milliseconds without a key

// The place that the details of an error point at, with a caret below a part of the text; -1: none.
qsizetype placeIn(QString text, const QString& details) {
    const QString excerpt = details.section('\n', 0, 0);
    const QString below = details.section('\n', 1, 1);
    if (below.trimmed() != "^")
        return -1;
    for (QChar& c : text)
        if (c.unicode() < 0x20 || c.unicode() == 0x7f)
            c = ' ';
    const QString cut = "...";
    const qsizetype left = excerpt == text || !excerpt.startsWith(cut) ? 0 : cut.size();
    const qsizetype right = excerpt == text || !excerpt.endsWith(cut) ? 0 : cut.size();
    const qsizetype first = text.indexOf(excerpt.mid(left, excerpt.size() - left - right));
    return first < 0 ? -1 : first + below.indexOf('^') - left;
}

// A line below a part of the field's text. The toolkit has formats in a field for what an input
// method tells; without a text that only changes the look.
void underline(QLineEdit* edit, qsizetype begin, qsizetype length) {
    QList<QInputMethodEvent::Attribute> attributes;
    if (length > 0) {
        QTextCharFormat format;
        format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        format.setUnderlineColor(readable(QColor(0xb0, 0x00, 0x20), edit->palette()));
        attributes +=
            {QInputMethodEvent::TextFormat, static_cast<int>(begin) - edit->cursorPosition(),
             static_cast<int>(length), format};
    }
    QInputMethodEvent event(QString(), attributes);
    QGuiApplication::sendEvent(edit, &event);
}

}  // namespace

FilterHelp::FilterHelp(const DatabaseSession& session, Kind kind, QComboBox* filter,
                       QToolButton* button, QLabel* finding)
    : QObject(filter),
      m_session(session),
      m_kind(kind),
      m_filter(filter),
      m_finding(finding),
      m_menu(new FilterInsertMenu(filter->lineEdit(), button)),
      m_completion(new FilterCompletion(filter->lineEdit())) {
    setUpField();
    m_finding->hide();
    button->setMenu(m_menu);
    connect(m_menu, &FilterInsertMenu::historyCleared, this, &FilterHelp::historyCleared);
    m_pause.setSingleShot(true);
    m_pause.setInterval(pause);
    connect(&m_pause, &QTimer::timeout, this, &FilterHelp::check);
    connect(filter->lineEdit(), &QLineEdit::textChanged, &m_pause, qOverload<>(&QTimer::start));
}

void FilterHelp::setUpField() {
    // The toolkit's completion would change the expression while it is typed.
    m_filter->setCompleter(nullptr);
    QLineEdit* edit = m_filter->lineEdit();
    edit->setPlaceholderText(m_filter->placeholderText());
    edit->setClearButtonEnabled(true);
    // Or a long expression would lose its end without a word.
    edit->setMaxLength(std::numeric_limits<int>::max());
    FilterHistory::show(m_filter);
}

void FilterHelp::setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    m_menu->setAttributes(attributes);
    m_completion->setAttributes(attributes);
    m_pause.start();
}

// The query is made and dropped: it takes no node, so nothing is read, and it reads on nowhere.
void FilterHelp::checkText(const QString& text) const {
    if (m_kind == Kind::NODES && isNodeList(text)) {
        core::parseNodeList(text.trimmed().toStdString());
        return;
    }
    workAside(m_filter, tr("Checking the filter..."), m_session.context,
              [&](const StepProgress&) { m_session.database->select({}, text.toStdString()); });
}

void FilterHelp::check() {
    const QString text = m_filter->currentText();
    if (!m_session.database || text.trimmed().isEmpty() || isIndexCommand(text)) {
        show({}, 0, 0);
        return;
    }
    // The library is at work for somebody else.
    if (isBusy(m_filter->window())) {
        m_pause.start();
        return;
    }
    try {
        checkText(text);
        show({}, 0, 0);
    } catch (const Cancelled&) {
        show({}, 0, 0);
    } catch (...) {
        const ErrorText error = describe(std::current_exception());
        const qsizetype place = placeIn(text, error.details);
        // Behind the end there is nothing to mark but what stands last.
        const qsizetype begin = std::min(place, text.size() - 1);
        qsizetype end = begin + 1;
        while (begin >= 0 && end < text.size() &&
               (text[end].isLetterOrNumber() || text[end] == '.' || text[end] == '_'))
            ++end;
        show(error.text, begin, begin < 0 ? 0 : end - begin);
    }
}

void FilterHelp::show(const QString& finding, qsizetype begin, qsizetype length) {
    underline(m_filter->lineEdit(), begin, length);
    showCheck(m_finding, finding, CheckKind::ERROR);
}

}  // namespace tarvo::window
