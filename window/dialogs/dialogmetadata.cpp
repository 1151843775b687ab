#include "window/dialogs/dialogmetadata.h"

#include "catalogue/catalogue.h"
#include "core/json.h"
#include "qrb/error.h"
#include "ui_dialogmetadata.h"
#include "window/common/clipboard.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/textfiles.h"
#include "window/common/textformat.h"
#include "window/common/theme.h"
#include "window/dialogs/checklabel.h"
#include "window/dialogs/defaultnames.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QStringDecoder>
#include <algorithm>
#include <stdexcept>

namespace tarvo::window {

namespace {

// What is checked by itself; longer texts wait for the button.
constexpr qsizetype longestCheckedByItself = 1 << 20;
constexpr int delayOfCheck = 300;  // milliseconds after the last change

enum FindingColumn { FINDING_LINE, FINDING_PLACE, FINDING_TEXT };

const char* const tooLongText = QT_TRANSLATE_NOOP(
    "QObject", "The text is too long to be pasted here.\nPut it into a file and load that.");

bool looksLikeJson(const QString& text) {
    const QString begin = text.left(1000).trimmed().left(1);
    return begin == "{" || begin == "[";
}

QString placed(const JsonFault& fault, const QString& text) {
    const auto at = lineAndColumn(text, fault.position);
    return QObject::tr("line %0, column %1: %2")
        .arg(QString::number(at.line), QString::number(at.column), fault.text);
}

}  // namespace

bool DialogMetaData::edit(const qrb::Pointcloud& database, QString& name, std::string& value,
                          bool isNew, QWidget* parent, bool readOnly) {
    DialogMetaData dialog(database, isNew, parent);
    dialog.write(name, value);
    if (readOnly)
        dialog.m_ui->labelTransaction->setText(
            tr("The database was opened for reading only: changes can't be saved."));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    name = dialog.name();
    value = dialog.value();
    return true;
}

DialogMetaData::DialogMetaData(const qrb::Pointcloud& database, bool isNew, QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogMetaData>()),
      m_database(database),
      m_isNew(isNew),
      m_settings("DialogMetaData") {
    m_ui->setupUi(this);
    for (const std::string& name : database.metaData().list())
        m_taken += QString::fromStdString(name);
    m_checking.setSingleShot(true);
    m_checking.setInterval(delayOfCheck);
    connect(&m_checking, &QTimer::timeout, this, &DialogMetaData::check);
    m_ui->editExample->setReadOnly(true);
    m_ui->treeFindings->installEventFilter(this);
    m_ui->splitter->setStretchFactor(0, 3);
    m_ui->splitter->setStretchFactor(1, 2);
    m_ui->splitterValue->setStretchFactor(0, 4);
    m_ui->splitterValue->setStretchFactor(1, 1);
    buildMenu();
    fillNames();
    m_settings.restoreGeometryOf(this);
    m_ui->splitter->restoreState(m_settings.value("Splitter").toByteArray());
}

DialogMetaData::~DialogMetaData() {
    m_settings.saveGeometryOf(this);
    m_settings.setValue("Splitter", m_ui->splitter->saveState());
}

void DialogMetaData::buildMenu() {
    auto* menu = new QMenu(this);
    menu->addActions({m_ui->actionLoad, m_ui->actionSave});
    menu->addSeparator();
    menu->addMenu(createCopyMenu(menu, this, SLOT(onCopyToClipboard())));
    m_ui->buttonMenu->setMenu(menu);
    // Shortcuts work only on actions of a visible widget.
    addActions({m_ui->actionLoad, m_ui->actionSave});
}

void DialogMetaData::fillNames() {
    QStringList names;
    for (const auto& entry : catalogue::metaData())
        names += QString::fromStdString(entry.name);
    suggestNames(m_ui->editName, names, m_taken);
}

void DialogMetaData::write(const QString& name, const std::string& value) {
    m_initialName = name;
    m_initialValue = value;
    const auto& metaData = m_database.metaData();
    m_storedValue = m_isNew ? std::string() : metaData.get(name.toStdString());
    const QSignalBlocker writing(m_ui->editName);
    m_ui->editName->setEditText(name);
    m_ui->editName->setEnabled(m_isNew);
    setWindowTitle(m_isNew ? tr("New Meta Data Item") : tr("Meta Data Item - %1").arg(name));

    // Formatted, because stored values are often one line.
    std::string shown = core::formattedJson(value);
    const QString given = QString::fromStdString(value);
    if (!JsonTextEdit::canHold(QString::fromStdString(shown)) && JsonTextEdit::canHold(given))
        shown = value;
    putText(QString::fromStdString(shown));
    m_ui->editValue->document()->clearUndoRedoStacks();
    m_initialText = text();
    m_ui->labelBytes->setVisible(m_initialText.toStdString() != shown);
    m_ui->labelTransaction->setVisible(!m_database.transactions().pending());
    m_ui->labelSigned->setVisible(!m_isNew && metaData.verifySignature(name.toStdString(), 0, {}));
    QPalette warning = QApplication::palette(m_ui->labelSigned);
    warning.setColor(QPalette::WindowText, readable(QColor("#7a5000"), warning));
    for (QLabel* label :
         {m_ui->labelSigned, m_ui->labelTransaction, m_ui->labelBytes, m_ui->labelHeld})
        label->setPalette(warning);
    showName();
    if (m_initialText.size() <= longestCheckedByItself)
        check();
    if (m_isNew)
        m_ui->editName->setFocus();
    else
        m_ui->editValue->setFocus();
}

void DialogMetaData::putText(const QString& text) {
    const bool fits = JsonTextEdit::canHold(text);
    const bool wasHeld = m_held.has_value();
    m_held = fits ? std::nullopt : std::optional(text);
    // An undo must not lead to what was but the beginning of a value.
    if (fits && !wasHeld)
        m_ui->editValue->replaceText(text);
    else
        m_ui->editValue->setPlainText(fits ? text : JsonTextEdit::beginningOf(text));
    m_ui->editValue->setReadOnly(!fits);
    m_ui->labelHeld->setVisible(!fits);
    checkLater();
}

QString DialogMetaData::name() const {
    return m_isNew ? m_ui->editName->currentText().trimmed() : m_initialName;
}

QString DialogMetaData::text() const {
    return m_held ? *m_held : m_ui->editValue->text();
}

std::string DialogMetaData::value() const {
    return text() == m_initialText ? m_initialValue : text().toStdString();
}

bool DialogMetaData::isChanged() const {
    return m_isNew ? !name().isEmpty() || !text().isEmpty() : value() != m_storedValue;
}

// Empty: the item may have the name.
QString DialogMetaData::faultOfName() const {
    if (!m_isNew)
        return {};
    if (name().isEmpty())
        return tr("Name missing.");
    return m_taken.contains(name()) ? tr("This item exists already.") : QString();
}

void DialogMetaData::on_editName_editTextChanged(const QString&) {
    showName();
    checkLater();
}

void DialogMetaData::showName() {
    const QString fault = faultOfName();
    // An empty field explains itself.
    showCheck(m_ui->labelName, name().isEmpty() ? QString() : fault, CheckKind::ERROR);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setToolTip(fault);
    showDefinition();
}

// Tells about the default item of that name.
void DialogMetaData::showDefinition() {
    const auto* entry = catalogue::findMetaData(name().toStdString());
    m_ui->labelTitle->setText(entry ? QString::fromStdString(entry->title)
                              : name().isEmpty()
                                  ? tr("Choose a default item or type a name of your own.")
                                  : tr("Not a TARVO default metadata entry."));
    m_ui->labelDescription->setText(entry ? QString::fromStdString(entry->description) : QString());
    m_ui->labelDescription->setVisible(entry != nullptr);
    m_ui->labelSchema->setVisible(!entry);
    m_ui->tabWidget->setTabEnabled(m_ui->tabWidget->indexOf(m_ui->tabExample), entry != nullptr);
    m_ui->editSchema->setReadOnly(entry != nullptr);
    const QString shown = entry ? QString::fromStdString(entry->name) : QString();
    if (shown == m_shownDefinition)
        return;  // A schema of the user's own stays while the name is typed.
    m_shownDefinition = shown;
    m_ui->editSchema->setPlainText(
        entry ? QString::fromStdString(core::formattedJson(entry->schema)) : QString());
    m_ui->editExample->setPlainText(
        entry ? QString::fromStdString(core::formattedJson(entry->example)) : QString());
}

void DialogMetaData::on_editValue_textChanged() {
    checkLater();
}

void DialogMetaData::on_editSchema_textChanged() {
    checkLater();
}

void DialogMetaData::on_buttonFormat_clicked() {
    putFormat(core::formattedJson(text().toStdString()));
}

void DialogMetaData::on_buttonCompact_clicked() {
    std::string compact = text().toStdString();
    core::compactJson(compact);
    putFormat(compact);
}

void DialogMetaData::putFormat(const std::string& bytes) {
    const QString formatted = QString::fromStdString(bytes);
    if (formatted == text())
        return;
    if (!m_held && !JsonTextEdit::canHold(formatted))
        showWarning(this, tr("The value would be too long to be edited here."));
    else
        putText(formatted);
}

void DialogMetaData::on_buttonUseExample_clicked() {
    const QString example = m_ui->editExample->text();
    if (text().trimmed().isEmpty() || text() == example ||
        confirmed(this, tr("Replace the value by the example?")))
        putText(example);
}

void DialogMetaData::on_editValue_tooLongToPaste() {
    showWarning(this, QObject::tr(tooLongText));
}

void DialogMetaData::on_editSchema_tooLongToPaste() {
    showWarning(this, QObject::tr(tooLongText));
}

void DialogMetaData::checkLater() {
    const qsizetype size =
        m_held ? m_held->size() : m_ui->editValue->document()->characterCount() - 1;
    const bool bySelf = size <= longestCheckedByItself;
    if (bySelf) {
        m_checking.start();
        return;
    }
    m_checking.stop();
    m_objection.clear();
    m_ui->buttonFormat->setEnabled(true);
    m_ui->buttonCompact->setEnabled(true);
    m_ui->buttonFault->hide();
    m_ui->editValue->setColoured(true);
    showFindings({}, {});
    showState(tr("Press \"Check\": the value is too long to be checked while you type."),
              State::NEUTRAL);
}

void DialogMetaData::on_buttonCheck_clicked() {
    check();
}

// Whether it is JSON, and what its schema says.
void DialogMetaData::check() {
    m_checking.stop();
    guarded(this, [this] {
        const WaitCursor waiting;
        const QString value = text();
        const auto fault = jsonFaultOf(value);
        m_objection.clear();
        m_ui->buttonFormat->setEnabled(!fault);
        m_ui->buttonCompact->setEnabled(!fault);
        m_ui->buttonFault->setVisible(fault && !value.trimmed().isEmpty());
        // A text that is not meant as JSON looks better without colours.
        m_ui->editValue->setColoured(!fault || looksLikeJson(value));
        if (fault) {
            showNoJson(value, *fault);
            return;
        }
        const QString schema = m_ui->editSchema->text();
        Findings found;
        QString refusal;
        if (schema.trimmed().isEmpty())
            showState(tr("JSON. There is no schema to check it against."), State::NEUTRAL);
        else if (const auto wrong = jsonFaultOf(schema))
            showState(tr("The schema is not JSON: %1").arg(placed(*wrong, schema)), State::WRONG);
        else if (found = findings(value, refusal); !refusal.isEmpty())
            showState(tr("The value can't be checked. %1").arg(refusal), State::WRONG);
        else
            showAnswer(found);
        showFindings(found, value);
        if (!found.list.empty())
            m_objection = tr("The value does not satisfy the schema.\nSave it anyway?");
    });
}

void DialogMetaData::showAnswer(const Findings& findings) {
    const std::size_t count = findings.list.size();
    QString state = count == 0   ? tr("The value satisfies the schema.")
                    : count == 1 ? tr("1 violation of the schema.")
                                 : tr("%0 violations of the schema.").arg(count);
    for (const std::string& note : findings.notes)
        state += ' ' + translatedMessage(note);
    showState(state, count == 0 ? State::RIGHT : State::WRONG);
}

void DialogMetaData::showNoJson(const QString& text, const JsonFault& fault) {
    const bool isMeantAsJson = looksLikeJson(text) || !m_ui->editSchema->text().trimmed().isEmpty();
    m_faultPlace = {fault.position, fault.position + 1};
    showFindings({}, {});
    if (text.trimmed().isEmpty()) {
        showState(tr("The value is empty."), State::NEUTRAL);
        m_objection = isMeantAsJson && m_isNew ? tr("The value is empty.\nSave it anyway?") : "";
        return;
    }
    showState(tr("Not JSON: %1 The item will be kept as text.").arg(placed(fault, text)),
              isMeantAsJson ? State::WRONG : State::NEUTRAL);
    if (isMeantAsJson)
        m_objection = tr("The value is not JSON.\nSave it as text?");
}

DialogMetaData::Findings DialogMetaData::findings(const QString& text, QString& refusal) const {
    try {
        return m_database.metaData().findingsOfJson(text.toStdString(),
                                                    m_ui->editSchema->text().toStdString());
    } catch (const qrb::Error& error) {
        refusal = (translatedMessage(error.what()) + ' ' + translatedMessage(error.details()))
                      .simplified();
        return {};
    }
}

void DialogMetaData::showFindings(const Findings& findings, const QString& text) {
    QStringList pointers;
    for (const auto& finding : findings.list)
        pointers += QString::fromStdString(finding.pointer);
    m_places.clear();
    std::vector<qsizetype> begins;
    for (const auto& place : placesOf(text, pointers)) {
        m_places.push_back(place.value_or(TextSpan()));
        begins.push_back(m_places.back().begin);
    }
    const auto at = linesAndColumns(text, begins);
    QList<QTreeWidgetItem*> rows;
    for (std::size_t i = 0; i < findings.list.size(); ++i) {
        auto* row = new QTreeWidgetItem;
        row->setText(FINDING_LINE, QString::number(at[i].line));
        row->setTextAlignment(FINDING_LINE, Qt::AlignRight | Qt::AlignVCenter);
        const QString& pointer = pointers[static_cast<qsizetype>(i)];
        row->setText(FINDING_PLACE, pointer.isEmpty() ? tr("(whole value)") : pointer);
        row->setText(FINDING_TEXT, translatedMessage(findings.list[i].text));
        for (const int column : {FINDING_PLACE, FINDING_TEXT})
            row->setToolTip(column, plainToolTip(row->text(column)));
        rows += row;
    }
    auto* tree = m_ui->treeFindings;
    tree->clear();
    tree->addTopLevelItems(rows);
    tree->setVisible(!rows.isEmpty());
    tree->resizeColumnToContents(FINDING_LINE);
    tree->resizeColumnToContents(FINDING_PLACE);
    tree->setColumnWidth(FINDING_PLACE,
                         std::min(tree->columnWidth(FINDING_PLACE), tree->width() / 2));
    m_ui->editValue->setMarks(m_places);
}

void DialogMetaData::showState(const QString& text, State state) {
    m_ui->labelState->setText(text);
    QPalette colours = QApplication::palette(m_ui->labelState);
    if (state != State::NEUTRAL)
        colours.setColor(QPalette::WindowText,
                         readable(QColor(state == State::RIGHT ? "#2e7d32" : "#b00020"), colours));
    m_ui->labelState->setPalette(colours);
}

void DialogMetaData::on_buttonFault_clicked() {
    m_ui->editValue->goTo(m_faultPlace);
    m_ui->editValue->setFocus();
}

void DialogMetaData::on_treeFindings_itemActivated(QTreeWidgetItem* item, int) {
    const int row = m_ui->treeFindings->indexOfTopLevelItem(item);
    if (row >= 0 && static_cast<std::size_t>(row) < m_places.size()) {
        m_ui->editValue->goTo(m_places[static_cast<std::size_t>(row)]);
        m_ui->editValue->setFocus();
    }
}

// The list tells its row by Return, but leaves the key to the dialog, whose default button it is.
bool DialogMetaData::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->treeFindings && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (QTreeWidgetItem* item = m_ui->treeFindings->currentItem())
                on_treeFindings_itemActivated(item, FINDING_LINE);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void DialogMetaData::on_treeFindings_itemClicked(QTreeWidgetItem* item, int column) {
    on_treeFindings_itemActivated(item, column);
}

void DialogMetaData::accept() {
    if (!faultOfName().isEmpty())
        return;
    if (m_isNew || isChanged()) {
        if (text().contains(QChar(0))) {
            showWarning(this, tr("The value holds a zero character, which no item can hold."));
            return;
        }
        check();
        if (!m_objection.isEmpty() && !confirmed(this, m_objection))
            return;
    }
    QDialog::accept();
}

void DialogMetaData::reject() {
    if (!isChanged() || lossConfirmed(this, tr("Discard the changes?")))
        QDialog::reject();
}

void DialogMetaData::on_actionLoad_triggered() {
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Load Value"));
    if (fileName.isEmpty())
        return;
    guarded(this, [&] {
        const std::string bytes = readFile(fileName);
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString text = decoder.decode(QByteArrayView(bytes));
        if (decoder.hasError() || text.contains(QChar(0)))
            throw std::runtime_error(tr("The file is not a text in UTF-8.").toStdString());
        putText(text);
    });
}

void DialogMetaData::on_actionSave_triggered() {
    const QString proposed = (name().isEmpty() ? QString("value") : name()) + ".json";
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save Value"), proposed);
    if (!fileName.isEmpty())
        guarded(this, [&] { writeFile(fileName, value()); });
}

void DialogMetaData::onCopyToClipboard() {
    copyToClipboard(text(), qobject_cast<QAction*>(sender()));
}

}  // namespace tarvo::window
