#include "window/dialogs/dialogimportpoints.h"

#include "numbers/numbertext.h"
#include "ui_dialogimportpoints.h"
#include "window/common/filefilter.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>

namespace tarvo::window {

namespace {

// As the coordinates of every point have to be there.
constexpr const char* primary = "tarvo.xyz";

enum Column { ATTRIBUTE, TITLE, RANGE, RESOLUTION, REMARK };

QString numberText(double value) {
    return QString::fromStdString(numbers::numberText(value));
}

QString rangeText(double least, double greatest) {
    return numberText(least) + " ... " + numberText(greatest);
}

QString filesText(const QStringList& fileNames) {
    constexpr int shown = 5;
    QStringList names;
    for (const QString& name : fileNames.mid(0, shown))
        names += QFileInfo(name).fileName();
    const QString text = names.join(", ");
    return fileNames.size() > shown ? text + QString(" and %0 more").arg(fileNames.size() - shown)
                                    : text;
}

QString extentText(const exchange::ImportPlan& plan) {
    static const QStringList names = {"X", "Y", "Z"};
    QStringList lines;
    for (std::size_t i = 0; i < plan.extent.size(); ++i)
        lines += names.value(static_cast<qsizetype>(i)) + ": " +
                 rangeText(plan.extent[i].first, plan.extent[i].second);
    return lines.isEmpty() ? "-" : lines.join('\n');
}

}  // namespace

bool DialogImportPoints::edit(const ImportFindings& findings, const ImportTarget& target,
                              ImportWish& wish, QWidget* parent) {
    DialogImportPoints dialog(findings, target, parent);
    dialog.show(wish);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    dialog.read(wish);
    return true;
}

DialogImportPoints::DialogImportPoints(const ImportFindings& findings, const ImportTarget& target,
                                       QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogImportPoints>()),
      m_settings("DialogImportPoints") {
    m_ui->setupUi(this);
    showFindings(findings);
    showTarget(target);
    m_settings.restoreGeometryOf(this);
}

DialogImportPoints::~DialogImportPoints() {
    m_settings.saveGeometryOf(this);
}

void DialogImportPoints::showFindings(const ImportFindings& findings) {
    const exchange::ImportPlan& plan = findings.plan;
    m_ui->labelFiles->setText(filesText(findings.fileNames));
    m_ui->labelPoints->setText(QLocale().toString(static_cast<qulonglong>(plan.pointCount)));
    m_ui->labelExtent->setText(extentText(plan));
    m_ui->labelSystem->setText(findings.system.isEmpty() ? "not told" : findings.system);
    QStringList notes = findings.notes;
    for (const std::string& note : plan.notes)
        notes += QString::fromStdString(note);
    m_ui->editNotes->setPlainText(notes.join('\n'));
    m_ui->editNotes->setVisible(!notes.isEmpty());
    m_ui->labelNotes->setVisible(!notes.isEmpty());
    for (const std::string& name : plan.order)
        addAttribute(name, plan.attributes.at(name));
    for (int column = ATTRIBUTE; column <= REMARK; ++column)
        m_ui->treeAttributes->resizeColumnToContents(column);
    m_ui->checkNewIds->setVisible(plan.attributes.contains("tarvo.id"));
}

void DialogImportPoints::addAttribute(const std::string& name,
                                      const exchange::ImportPlan::Attribute& attribute) {
    const qrb::pointcloud::PointAttribute& definition = attribute.definition;
    auto* row = new QTreeWidgetItem(m_ui->treeAttributes);
    const QString length =
        definition.length == 1 ? QString() : QString(", %0 elements").arg(definition.length);
    row->setText(ATTRIBUTE, QString::fromStdString(name));
    row->setText(TITLE, QString::fromStdString(definition.title) + length);
    row->setText(RANGE, rangeText(definition.minimumValue, definition.maximumValue));
    row->setText(RESOLUTION, numberText(definition.resolution));
    QString remark;
    if (attribute.fault) {
        remark = QString::fromUtf8(attribute.fault->what());
    } else if (attribute.constant) {
        remark = "all points have " + numberText(definition.defaultValue);
    }
    row->setText(REMARK, remark);
    row->setToolTip(REMARK, plainToolTip(remark));
    // What can't be taken has to be left out.
    row->setCheckState(ATTRIBUTE, attribute.fault ? Qt::Unchecked : Qt::Checked);
    // Points without coordinates are none.
    if (name == primary)
        row->setFlags(row->flags() & ~Qt::ItemIsUserCheckable);
}

void DialogImportPoints::showTarget(const ImportTarget& target) {
    const bool takes = !target.fileName.isEmpty() && target.refusal.isEmpty();
    m_ui->radioOpen->setEnabled(takes);
    m_ui->labelOpen->setText(target.fileName.isEmpty() ? "none is open"
                             : takes                   ? QFileInfo(target.fileName).fileName()
                                                       : target.refusal);
    m_ui->labelOpen->setEnabled(takes);
    m_ui->checkRound->setEnabled(false);
}

void DialogImportPoints::show(const ImportWish& wish) {
    m_ui->editLocation->setText(wish.location);
    m_ui->radioOpen->setChecked(wish.intoOpen && m_ui->radioOpen->isEnabled());
    m_ui->checkRound->setChecked(wish.round);
    m_ui->checkAsTheyAre->setChecked(wish.asTheyAre);
    m_ui->checkNewIds->setChecked(wish.newIds);
    for (const QString& name : wish.leftOut)
        for (QTreeWidgetItem* row : m_ui->treeAttributes->findItems(name, Qt::MatchExactly))
            row->setCheckState(ATTRIBUTE, Qt::Unchecked);
}

void DialogImportPoints::read(ImportWish& wish) const {
    wish.intoOpen = m_ui->radioOpen->isChecked();
    wish.location = m_ui->editLocation->text().trimmed();
    wish.round = m_ui->checkRound->isChecked();
    wish.asTheyAre = m_ui->checkAsTheyAre->isChecked();
    wish.newIds = m_ui->checkNewIds->isChecked();
    wish.leftOut.clear();
    for (int i = 0; i < m_ui->treeAttributes->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = m_ui->treeAttributes->topLevelItem(i);
        if (row->checkState(ATTRIBUTE) != Qt::Checked)
            wish.leftOut += row->text(ATTRIBUTE);
    }
}

void DialogImportPoints::accept() {
    if (m_ui->radioNew->isChecked() && m_ui->editLocation->text().trimmed().isEmpty()) {
        showError(this, "Location missing.");
        return;
    }
    QDialog::accept();
}

void DialogImportPoints::on_buttonLocation_clicked() {
    // Whoever creates the file asks whether it may replace another one.
    const QString name = QFileDialog::getSaveFileName(
        this, "New Database", m_ui->editLocation->text().trimmed(), databaseFileDialogFilter(),
        nullptr, QFileDialog::DontConfirmOverwrite);
    if (name.isEmpty())
        return;
    m_ui->editLocation->setText(QDir::toNativeSeparators(name));
    m_ui->radioNew->setChecked(true);
}

void DialogImportPoints::on_editLocation_textEdited() {
    m_ui->radioNew->setChecked(true);
}

void DialogImportPoints::on_radioOpen_toggled(bool checked) {
    m_ui->checkRound->setEnabled(checked);
}

}  // namespace tarvo::window
