#include "window/dialogs/dialogimportpoints.h"

#include "catalogue/catalogue.h"
#include "core/error.h"
#include "ui_dialogimportpoints.h"
#include "window/common/filefilter.h"
#include "window/common/guard.h"
#include "window/common/localnumbers.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLocale>

namespace tarvo::window {

namespace {

QString filesText(const QStringList& fileNames) {
    constexpr int shown = 5;
    QStringList names;
    for (const QString& name : fileNames.mid(0, shown))
        names += QFileInfo(name).fileName();
    const QString text = names.join(", ");
    return fileNames.size() > shown
               ? QObject::tr("%0 and %1 more").arg(text, QString::number(fileNames.size() - shown))
               : text;
}

QString extentText(const exchange::ImportPlan& plan) {
    static const QStringList names = {"X", "Y", "Z"};
    QStringList lines;
    for (std::size_t i = 0; i < plan.extent.size(); ++i)
        lines += QString("%0: %1 ... %2")
                     .arg(names.value(static_cast<qsizetype>(i)), localNumber(plan.extent[i].first),
                          localNumber(plan.extent[i].second));
    return lines.isEmpty() ? "-" : lines.join('\n');
}

// Those of the database, then those that every program knows.
QStringList proposedAttributes(const ImportTarget& target) {
    QStringList names = target.attributes;
    for (const catalogue::AttributeEntry& entry : catalogue::attributes()) {
        const QString name = QString::fromStdString(entry.name);
        for (std::uint32_t i = 0; i < entry.length; ++i)
            names += entry.length == 1 ? name : QString("%0[%1]").arg(name).arg(i);
    }
    names.removeDuplicates();
    return names;
}

}  // namespace

core::Shape ImportShape::shape() const {
    core::Shape shape;
    shape.every = static_cast<std::uint64_t>(every);
    if (!distance.isEmpty()) {
        bool isNumber = false;
        shape.distance = QLocale::c().toDouble(withPoint(distance), &isNumber);
        if (!isNumber || !(shape.distance >= core::Thinning::leastDistance &&
                           shape.distance <= core::Thinning::mostDistance))
            throw core::Failure(QObject::tr("\"%1\" is no distance.").arg(distance).toStdString(),
                                QObject::tr("A positive number is needed, for example %1.")
                                    .arg(localNumber(0.05))
                                    .toStdString());
    }
    if (!bounds.isEmpty())
        shape.bounds = core::boundsFromText(bounds.toStdString());
    return shape;
}

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
      m_findings(findings),
      m_settings("DialogImportPoints") {
    m_ui->setupUi(this);
    m_columns =
        new ImportColumns(m_ui->treeColumns, findings.columns, proposedAttributes(target), this);
    connect(m_columns, &ImportColumns::changed, this, &DialogImportPoints::showPlan);
    showFindings();
    showTarget(target);
    m_settings.restoreGeometryOf(this);
}

DialogImportPoints::~DialogImportPoints() {
    m_settings.saveGeometryOf(this);
}

void DialogImportPoints::showFindings() {
    m_ui->labelFiles->setText(filesText(m_findings.fileNames));
    m_ui->labelPoints->setText(QLocale().toString(static_cast<qulonglong>(m_findings.pointCount)));
    m_ui->labelSystem->setText(m_findings.system.isEmpty() ? tr("not told") : m_findings.system);
    m_ui->widgetShape->hide();
    showPlan();
    constexpr int widest = 200;
    for (int column = 0; column + 1 < m_ui->treeColumns->columnCount(); ++column) {
        m_ui->treeColumns->resizeColumnToContents(column);
        m_ui->treeColumns->setColumnWidth(column,
                                          std::min(m_ui->treeColumns->columnWidth(column), widest));
    }
}

// What becomes of the columns as they are chosen now.
void DialogImportPoints::showPlan() {
    QStringList notes = m_findings.notes;
    QString fault;
    bool hasIds = false;
    try {
        const exchange::ImportPlan plan = m_findings.plan(m_columns->map());
        m_ui->labelExtent->setText(extentText(plan));
        notes += translatedMessages(plan.notes);
        hasIds = plan.attributes.contains("tarvo.id");
        m_columns->showPlan(&plan);
    } catch (const core::Failure&) {
        const auto [text, details] = describe(std::current_exception());
        fault = details.isEmpty() ? text : text + '\n' + details;
        m_ui->labelExtent->setText("-");
        m_columns->showPlan(nullptr);
    }
    m_ui->labelFault->setText(fault);
    m_ui->labelFault->setVisible(!fault.isEmpty());
    m_ui->editNotes->setPlainText(notes.join('\n'));
    m_ui->editNotes->setVisible(!notes.isEmpty());
    m_ui->labelNotes->setVisible(!notes.isEmpty());
    m_ui->checkNewIds->setVisible(hasIds);
}

void DialogImportPoints::showTarget(const ImportTarget& target) {
    const bool takes = !target.fileName.isEmpty() && target.refusal.isEmpty();
    m_ui->radioOpen->setEnabled(takes);
    m_ui->labelOpen->setText(target.fileName.isEmpty() ? tr("none is open")
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
    m_columns->choose(wish.map);
    m_ui->editEvery->setValue(wish.shape.every);
    m_ui->editDistance->setText(wish.shape.distance);
    m_ui->editBounds->setText(wish.shape.bounds);
    m_ui->buttonShape->setChecked(wish.shape.every > 1 || !wish.shape.distance.isEmpty() ||
                                  !wish.shape.bounds.isEmpty());
}

ImportShape DialogImportPoints::shape() const {
    return {m_ui->editEvery->value(), m_ui->editDistance->text().trimmed(),
            m_ui->editBounds->text().trimmed()};
}

void DialogImportPoints::read(ImportWish& wish) const {
    wish.intoOpen = m_ui->radioOpen->isChecked();
    wish.location = m_ui->editLocation->text().trimmed();
    wish.round = m_ui->checkRound->isChecked();
    wish.asTheyAre = m_ui->checkAsTheyAre->isChecked();
    wish.newIds = m_ui->checkNewIds->isChecked();
    wish.map = m_columns->map();
    wish.shape = shape();
}

void DialogImportPoints::accept() {
    const QString location = m_ui->editLocation->text().trimmed();
    if (m_ui->radioNew->isChecked() && location.isEmpty()) {
        showError(this, tr("Location missing."));
        return;
    }
    if (m_ui->radioNew->isChecked())
        m_ui->editLocation->setText(withDatabaseExtension(location));
    if (guarded(this, [this] {
            (void)shape().shape();
            (void)m_findings.plan(m_columns->map());
        }))
        QDialog::accept();
}

void DialogImportPoints::on_buttonLocation_clicked() {
    // Whoever creates the file asks whether it may replace another one.
    const QString name = QFileDialog::getSaveFileName(
        this, tr("New Database"), m_ui->editLocation->text().trimmed(), databaseFileDialogFilter(),
        nullptr, QFileDialog::DontConfirmOverwrite);
    if (name.isEmpty())
        return;
    m_ui->editLocation->setText(QDir::toNativeSeparators(name));
    m_ui->radioNew->setChecked(true);
}

void DialogImportPoints::on_buttonShape_toggled(bool checked) {
    m_ui->buttonShape->setArrowType(checked ? Qt::DownArrow : Qt::RightArrow);
    m_ui->widgetShape->setVisible(checked);
}

void DialogImportPoints::on_editLocation_textEdited() {
    m_ui->radioNew->setChecked(true);
}

void DialogImportPoints::on_radioOpen_toggled(bool checked) {
    m_ui->checkRound->setEnabled(checked);
}

}  // namespace tarvo::window
