#include "window/widgets/filtercompletion.h"

#include "core/namedvalues.h"
#include "window/common/textformat.h"
#include "window/widgets/filterwords.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStandardItemModel>
#include <algorithm>

namespace tarvo::window {

namespace {

// More than anybody looks through.
constexpr qsizetype mostEntries = 200;
constexpr int insertedRole = Qt::UserRole;

}  // namespace

FilterCompletion::FilterCompletion(QLineEdit* edit)
    : QObject(edit),
      m_edit(edit),
      m_model(new QStandardItemModel(this)),
      m_completer(new QCompleter(m_model, this)) {
    m_completer->setObjectName("filterCompletion");
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    // The field's own completer would replace the whole text.
    m_completer->setWidget(edit);
    m_completer->popup()->installEventFilter(this);
    // The field of a box passes the focus on, and the box hands the keys in by itself.
    QObject* const typed = m_edit->focusProxy() ? m_edit->focusProxy() : edit;
    typed->installEventFilter(this);
    connect(m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            &FilterCompletion::insert);
    connect(m_edit, &QLineEdit::textEdited, this, [this] { offer(false); });
    connect(m_edit, &QLineEdit::cursorPositionChanged, this, [this] {
        if (m_completer->popup()->isVisible())
            offer(false);
    });
}

void FilterCompletion::setAttributes(
    const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    m_names.clear();
    m_values.clear();
    for (const auto& attribute : attributes) {
        const QString name = QString::fromStdString(attribute.name);
        m_names += attribute.length > mostShownElements ? QStringList(name)
                                                        : shownElements(name, attribute.length);
        for (const core::NamedValue& value : core::readNamedValues(attribute.namedValues)) {
            const QString number = QString::fromStdString(value.value).trimmed();
            if (value.understood && core::namedNumber(value.value))
                m_values[name] +=
                    {oneLine(number + ' ' + QString::fromStdString(value.name).trimmed()), number};
        }
    }
    m_names.sort();
}

// Names that begin with the text come first.
QList<FilterCompletion::Entry> FilterCompletion::matchingNames(const QString& text) const {
    QList<Entry> first, others;
    for (const QString& name : m_names) {
        if (name.startsWith(text, Qt::CaseInsensitive))
            first += {name, name};
        else if (name.contains(text, Qt::CaseInsensitive))
            others += {name, name};
    }
    return first + others;
}

QList<FilterCompletion::Entry> FilterCompletion::entries(bool isAsked) const {
    const auto word = filterWordAt(m_edit->text(), m_edit->cursorPosition());
    if (!word)
        return isAsked ? matchingNames({}) : QList<Entry>();
    QList<Entry> found;
    for (const Entry& value : m_values.value(word->compared))
        if (value.shown.contains(word->text, Qt::CaseInsensitive))
            found += value;
    const bool isName = !word->isQuoted && !word->text.isEmpty() && !word->text[0].isDigit() &&
                        word->text[0] != '-';
    if (found.isEmpty() && (isName || (isAsked && !word->isQuoted && word->text.isEmpty())))
        found = matchingNames(word->text);
    const bool isWhole = found.size() == 1 && found[0].inserted == word->text;
    return isWhole ? QList<Entry>() : found.mid(0, mostEntries);
}

void FilterCompletion::offer(bool isAsked) {
    if (m_inserting)
        return;
    auto* popup = m_completer->popup();
    const QList<Entry> found = entries(isAsked);
    if (found.isEmpty()) {
        popup->hide();
        return;
    }
    m_model->clear();
    for (const Entry& entry : found) {
        auto* item = new QStandardItem(entry.shown);
        item->setData(entry.inserted, insertedRole);
        m_model->appendRow(item);
    }
    const int width = popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width() +
                      2 * popup->frameWidth();
    const QRect cursor = m_edit->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    m_completer->complete(QRect(cursor.left(), 0, std::max(width, 160), m_edit->height()));
    popup->setCurrentIndex(QModelIndex());
}

void FilterCompletion::insert(const QModelIndex& index) {
    const QString text = index.data(insertedRole).toString();
    const auto word = filterWordAt(m_edit->text(), m_edit->cursorPosition());
    const QScopedValueRollback inserting(m_inserting, true);
    if (word)
        m_edit->setSelection(static_cast<int>(word->begin),
                             static_cast<int>(word->end - word->begin));
    m_edit->insert(text);
}

bool FilterCompletion::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    // What function keys do is shown where the list would hide it.
    if (watched == m_completer->popup() && key->key() >= Qt::Key_F1 && key->key() <= Qt::Key_F35)
        m_completer->popup()->hide();
    if (event->type() == QEvent::ShortcutOverride)
        return false;
    if (watched != m_completer->popup()) {
        if (key->key() == Qt::Key_Space && key->modifiers() == Qt::ControlModifier) {
            offer(true);
            return true;
        }
        return false;
    }
    // Or the field would take Return for the wish to run the filter, and Tab for leaving.
    const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (!isReturn && key->key() != Qt::Key_Tab)
        return false;
    auto* popup = m_completer->popup();
    QModelIndex chosen = popup->currentIndex();
    if (!chosen.isValid() && !isReturn)
        chosen = m_completer->completionModel()->index(0, 0);
    popup->hide();
    if (!chosen.isValid())
        return false;
    insert(chosen);
    return true;
}

}  // namespace tarvo::window
