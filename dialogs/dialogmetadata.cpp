#include "dialogs/dialogmetadata.h"

#include "common/clipboard.h"
#include "common/guard.h"
#include "common/jsonvalues.h"
#include "common/messageboxes.h"
#include "common/textfiles.h"
#include "common/theme.h"
#include "dialogs/defaultnames.h"
#include "qrb/defaults/catalogue.h"
#include "qrb/error.h"
#include "ui_dialogmetadata.h"

#include <QFileDialog>
#include <QMenu>
#include <QPushButton>
#include <QStringDecoder>
#include <algorithm>

namespace common = tarvo::common;

namespace {

// What is checked by itself; longer texts wait for the button.
constexpr qsizetype longestCheckedByItself = 1 << 20;
constexpr int delayOfCheck = 300;  // milliseconds after the last change
// About where the library stops.
constexpr std::size_t mostFindings = 1000;

enum FindingColumn { FINDING_LINE, FINDING_PLACE, FINDING_TEXT };

bool isText(const std::string& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(QByteArrayView(bytes));
    return !decoder.hasError() && !text.contains(QChar(0));
}

}  // namespace

bool DialogMetaData::edit(const tarvo::qrb::Pointcloud& database, QString& name, std::string& value,
                          bool isNew, QWidget* parent) {
    DialogMetaData dialog(database, isNew, parent);
    dialog.write(name, value);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    name = dialog.name();
    value = dialog.value();
    return true;
}

DialogMetaData::DialogMetaData(const tarvo::qrb::Pointcloud& database, bool isNew, QWidget* parent)
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
    menu->addMenu(common::createCopyMenu(menu, this, SLOT(onCopyToClipboard())));
    m_ui->buttonMenu->setMenu(menu);
    // Shortcuts work only on actions of a visible widget.
    addActions({m_ui->actionLoad, m_ui->actionSave});
}

void DialogMetaData::fillNames() {
    QStringList names;
    for (const auto& entry : tarvo::qrb::defaults::metaData())
        names += QString::fromStdString(entry.name);
    tarvo::dialogs::suggestNames(m_ui->editName, names, m_taken);
}

void DialogMetaData::write(const QString& name, const std::string& value) {
    m_initialName = name;
    m_initialValue = value;
    const QSignalBlocker writing(m_ui->editName);
    m_ui->editName->setEditText(name);
    m_ui->editName->lineEdit()->setReadOnly(!m_isNew);
    m_ui->editName->setEnabled(m_isNew);
    setWindowTitle(m_isNew ? "New Meta Data Item" : "Meta Data Item - " + name);
    // Formatted, because stored values are often one line.
    m_ui->editValue->setPlainText(QString::fromStdString(common::formattedJson(value)));
    m_initialText = text();
    m_ui->labelBytes->setVisible(!isText(value));
    m_ui->labelTransaction->setVisible(!m_database.transactions().pending());
    m_ui->labelSigned->setVisible(!m_isNew && m_database.metaData().exists(name.toStdString()) &&
                                  m_database.metaData().verifySignature(name.toStdString(), 0, {}));
    showName();
    check();
    if (m_isNew)
        m_ui->editName->setFocus();
    else
        m_ui->editValue->setFocus();
}

QString DialogMetaData::name() const {
    return m_ui->editName->currentText().trimmed();
}

QString DialogMetaData::text() const {
    return m_ui->editValue->toPlainText();
}

std::string DialogMetaData::value() const {
    return text() == m_initialText ? m_initialValue : text().toStdString();
}

bool DialogMetaData::isChanged() const {
    return name() != m_initialName || text() != m_initialText;
}

// Empty: the item may have the name.
QString DialogMetaData::faultOfName() const {
    if (!m_isNew)
        return {};
    if (name().isEmpty())
        return "Name missing.";
    return m_taken.contains(name()) ? QString("This item exists already.") : QString();
}

void DialogMetaData::on_editName_editTextChanged(const QString&) {
    showName();
    checkLater();
}

void DialogMetaData::showName() {
    const QString fault = faultOfName();
    // An empty field explains itself.
    m_ui->labelName->setText(name().isEmpty() ? QString() : fault);
    m_ui->labelName->setVisible(!m_ui->labelName->text().isEmpty());
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setToolTip(fault);
    showDefinition();
}

// Tells about the default item of that name.
void DialogMetaData::showDefinition() {
    const auto* entry = tarvo::qrb::defaults::findMetaData(name().toStdString());
    m_ui->labelTitle->setText(entry ? QString::fromStdString(entry->title)
                                    : QString("Not a TARVO default metadata entry."));
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
        entry ? QString::fromStdString(common::formattedJson(entry->schema)) : QString());
    m_ui->editExample->setPlainText(
        entry ? QString::fromStdString(common::formattedJson(entry->example)) : QString());
}

void DialogMetaData::on_editValue_textChanged() {
    checkLater();
}

void DialogMetaData::on_editSchema_textChanged() {
    checkLater();
}

void DialogMetaData::on_buttonFormat_clicked() {
    m_ui->editValue->replaceText(
        QString::fromStdString(common::formattedJson(text().toStdString())));
}

void DialogMetaData::on_buttonCompact_clicked() {
    std::string compact = text().toStdString();
    if (common::compactJson(compact))
        m_ui->editValue->replaceText(QString::fromStdString(compact));
}

void DialogMetaData::on_buttonUseExample_clicked() {
    const bool mayReplace = text().trimmed().isEmpty() ||
                            text() == m_ui->editExample->toPlainText() ||
                            common::confirmed(this, "Replace the value by the example?");
    if (mayReplace)
        m_ui->editValue->replaceText(m_ui->editExample->toPlainText());
}

void DialogMetaData::checkLater() {
    if (text().size() <= longestCheckedByItself) {
        m_checking.start();
        return;
    }
    m_checking.stop();
    showFindings({}, {});
    showState("Press \"Check\": the value is too long to be checked while you type.", false);
    m_ui->buttonFault->hide();
}

void DialogMetaData::on_buttonCheck_clicked() {
    const common::WaitCursor waiting;
    check();
}

// Whether it is JSON, and what its schema says.
void DialogMetaData::check() {
    m_checking.stop();
    common::guarded(this, [this] {
        const QString value = text();
        const auto fault = common::jsonFaultOf(value);
        m_ui->buttonFormat->setEnabled(!fault);
        m_ui->buttonCompact->setEnabled(!fault);
        m_ui->buttonFault->setVisible(fault && !value.trimmed().isEmpty());
        // A text that is not meant as JSON looks better without colours.
        const QString begin = value.trimmed().left(1);
        m_ui->editValue->setColoured(!fault || begin == "{" || begin == "[");
        if (fault) {
            m_faultPlace = {fault->position, fault->position};
            const auto at = common::lineAndColumn(value, fault->position);
            showFindings({}, {});
            if (value.trimmed().isEmpty())
                showState("The value is empty.", false);
            else
                showState(QString("Not JSON: line %0, column %1: %2\nThe item is kept as text.")
                              .arg(at.line)
                              .arg(at.column)
                              .arg(fault->text),
                          begin == "{" || begin == "[");
            return;
        }
        const QString schema = m_ui->editSchema->toPlainText().trimmed();
        if (schema.isEmpty()) {
            showFindings({}, {});
            showState("JSON. There is no schema to check it against.", false);
            return;
        }
        if (const auto wrong = common::jsonFaultOf(schema)) {
            const auto at = common::lineAndColumn(schema, wrong->position);
            showFindings({}, {});
            showState(QString("The schema is not JSON: line %0, column %1: %2")
                          .arg(at.line)
                          .arg(at.column)
                          .arg(wrong->text),
                      true);
            return;
        }
        const auto found = findings(value);
        showFindings(found, value);
        if (found.empty())
            showState("JSON, and as the schema wants it.", false);
        else
            showState(
                (found.size() == 1
                     ? QString("The schema wants it otherwise in 1 place.")
                     : QString("The schema wants it otherwise in %0 places.").arg(found.size())) +
                    (found.size() < mostFindings ? "" : " There may be more."),
                true);
    });
}

std::vector<DialogMetaData::Finding> DialogMetaData::findings(const QString& text) const {
    std::vector<Finding> result;
    try {
        m_database.metaData().validateJson(text.toStdString(),
                                           m_ui->editSchema->toPlainText().toStdString());
    } catch (const tarvo::qrb::Error& error) {
        const QString details = QString::fromUtf8(error.details());
        for (const QString& line : details.split('\n', Qt::SkipEmptyParts)) {
            const qsizetype colon = line.indexOf(": ");
            if (line.startsWith('/') && colon > 0)
                result.push_back({line.left(colon), line.mid(colon + 2)});
            else
                result.push_back({{}, line});
        }
        // Not about the value, but about the schema.
        if (error.code() != QRB_ERROR_VALIDATION)
            result = {{{}, (QString::fromUtf8(error.what()) + ' ' + details).simplified()}};
    }
    return result;
}

void DialogMetaData::showFindings(const std::vector<Finding>& findings, const QString& text) {
    QStringList pointers;
    for (const Finding& finding : findings)
        pointers += finding.pointer;
    const auto places = common::placesOf(text, pointers);
    m_places.clear();
    QList<QTreeWidgetItem*> rows;
    std::vector<common::TextSpan> marks;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const common::TextSpan place = places[i].value_or(common::TextSpan());
        m_places.push_back(place);
        // Of what spans lines, only where it begins.
        const qsizetype lineEnd = text.indexOf('\n', place.begin);
        if (!findings[i].pointer.isEmpty())
            marks.push_back({place.begin, lineEnd < 0 ? place.end : std::min(place.end, lineEnd)});
        auto* row = new QTreeWidgetItem;
        row->setText(FINDING_LINE, QString::number(common::lineAndColumn(text, place.begin).line));
        row->setTextAlignment(FINDING_LINE, Qt::AlignRight | Qt::AlignVCenter);
        row->setText(FINDING_PLACE, findings[i].pointer);
        row->setText(FINDING_TEXT, findings[i].text);
        rows += row;
    }
    m_ui->treeFindings->clear();
    m_ui->treeFindings->addTopLevelItems(rows);
    m_ui->treeFindings->setVisible(!rows.isEmpty());
    m_ui->treeFindings->resizeColumnToContents(FINDING_LINE);
    m_ui->treeFindings->resizeColumnToContents(FINDING_PLACE);
    m_ui->editValue->setMarks(marks);
}

void DialogMetaData::showState(const QString& text, bool wrong) {
    m_ui->labelState->setText(text);
    QPalette colours = palette();
    if (wrong)
        colours.setColor(QPalette::WindowText, common::readable(QColor("#c62828"), palette()));
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

void DialogMetaData::on_treeFindings_itemClicked(QTreeWidgetItem* item, int column) {
    on_treeFindings_itemActivated(item, column);
}

void DialogMetaData::accept() {
    if (!faultOfName().isEmpty())
        return;
    const bool checked = text().size() <= longestCheckedByItself;
    if (checked)
        check();
    if (m_ui->treeFindings->topLevelItemCount() > 0 && isChanged() &&
        !common::confirmed(this, "The value does not satisfy its schema.\nSave it anyway?"))
        return;
    QDialog::accept();
}

void DialogMetaData::reject() {
    if (!isChanged() || common::confirmed(this, "Discard the changes?"))
        QDialog::reject();
}

void DialogMetaData::on_actionLoad_triggered() {
    const QString fileName = QFileDialog::getOpenFileName(this, "Load Value");
    if (fileName.isEmpty())
        return;
    common::guarded(this, [&] {
        m_ui->editValue->replaceText(QString::fromStdString(common::readFile(fileName)));
    });
}

void DialogMetaData::on_actionSave_triggered() {
    const QString proposed = (name().isEmpty() ? QString("value") : name()) + ".json";
    const QString fileName = QFileDialog::getSaveFileName(this, "Save Value", proposed);
    if (!fileName.isEmpty())
        common::guarded(this, [&] { common::writeFile(fileName, value()); });
}

void DialogMetaData::onCopyToClipboard() {
    common::copyToClipboard(text(), qobject_cast<QAction*>(sender()));
}
