// DialogPointAttribute: what is wrong with a definition, told at its fields.
#include "window/dialogs/attribute/dialogpointattribute.h"

#include "core/redefinition.h"
#include "qrb/error.h"
#include "ui_dialogpointattribute.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"
#include "window/dialogs/checklabel.h"

#include <QLocale>
#include <QPushButton>
#include <algorithm>

namespace tarvo::window {

using qrb::pointcloud::PointAttribute;

namespace {

CheckKind kindOf(core::Severity severity) {
    switch (severity) {
        case core::Severity::ERROR:
            break;
        case core::Severity::REFUSAL:
            return CheckKind::REFUSAL;
        case core::Severity::NOTE:
            return CheckKind::NOTE;
    }
    return CheckKind::ERROR;
}

}  // namespace

std::vector<core::AttributeFinding> DialogPointAttribute::findings(
    const PointAttribute& attribute) {
    using core::AttributeField;
    using core::Severity;
    auto found = core::checkAttribute(attribute, m_use);
    // A text that is no number is told as such, in place of what follows from it.
    const std::pair<NumberEdit*, AttributeField> numbers[] = {
        {m_ui->editInvalidValue, AttributeField::DEFAULT},
        {m_ui->editDefaultValue, AttributeField::DEFAULT},
        {m_ui->editScaleFactor, AttributeField::RESOLUTION},
        {m_ui->editResolution, AttributeField::RESOLUTION},
        {m_ui->editMaximumValue, AttributeField::RANGE},
        {m_ui->editMinimumValue, AttributeField::RANGE},
    };
    for (const auto& [edit, field] : numbers) {
        if (!edit->isEnabled() || edit->number())
            continue;
        const QString text = edit->text().trimmed();
        const QString problem =
            text.isEmpty() ? tr("A number is missing.")
            : text.contains(',') && QLocale().decimalPoint() == "."
                ? tr("\"%0\" is no number; the decimal mark is a point.").arg(text)
                : tr("\"%0\" is no number.").arg(text);
        found.insert(found.begin(), {field, Severity::ERROR, problem.toStdString()});
    }
    // The library has the last word.
    QString type;
    try {
        const auto dataType = attribute.dataType();
        type = QString("%0 (%1)")
                   .arg(dataTypeName(dataType))
                   .arg(dataTypeSize(dataType) == 1 ? tr("1 byte")
                                                    : tr("%0 bytes").arg(dataTypeSize(dataType)));
    } catch (const qrb::Error& problem) {
        // Told here only where the checks found nothing.
        if (std::all_of(found.begin(), found.end(),
                        [](const auto& each) { return each.severity == Severity::NOTE; }))
            found.push_back({AttributeField::LENGTH, Severity::REFUSAL, problem.what()});
    }
    m_validGrid = std::none_of(found.begin(), found.end(), [](const auto& finding) {
        return finding.severity != Severity::NOTE && finding.field >= AttributeField::RANGE &&
               finding.field <= AttributeField::DEFAULT;
    });
    m_ui->labelDataTypeValue->setText(m_validGrid ? type : tr("unknown"));
    return found;
}

void DialogPointAttribute::showFindings(const std::vector<core::AttributeFinding>& found) {
    using core::AttributeField;
    using core::Severity;
    struct Row {
        AttributeField field;
        QLabel* label;
        std::vector<QWidget*> fields;
    };
    const Row rows[] = {
        {AttributeField::NAME, m_ui->checkName, {m_ui->editName}},
        {AttributeField::TITLE, m_ui->checkTitle, {m_ui->editTitle}},
        {AttributeField::TAGS, m_ui->checkTags, {m_ui->editTags}},
        {AttributeField::LENGTH, m_ui->checkLength, {m_ui->editLength}},
        {AttributeField::RANGE, m_ui->checkRange, {m_ui->editMinimumValue, m_ui->editMaximumValue}},
        {AttributeField::RESOLUTION,
         m_ui->checkResolution,
         {m_ui->editResolution, m_ui->editScaleFactor}},
        {AttributeField::DEFAULT,
         m_ui->checkDefault,
         {m_ui->editDefaultValue, m_ui->editInvalidValue}},
        {AttributeField::STORAGE,
         m_ui->checkStorage,
         {m_ui->editStorageClass, m_ui->editCompressionOptions}},
        {AttributeField::NAMED_VALUES, m_ui->checkNamedValues, {m_ui->editNamedValues}},
        {AttributeField::LOD_SETTINGS, m_ui->checkLodSettings, {m_ui->editLodSettings}},
    };
    // Nobody has done wrong before anything was typed.
    const bool untouched = !isEditing() && !isTyped();
    const auto kindShown = [untouched](Severity severity) {
        return untouched && severity == Severity::ERROR ? CheckKind::MISSING : kindOf(severity);
    };
    for (const Row& row : rows) {
        const auto first = std::find_if(found.begin(), found.end(),
                                        [&](const auto& each) { return each.field == row.field; });
        const bool any = first != found.end();
        showCheck(row.label, any ? translatedMessage(first->text) : QString(),
                  any ? kindShown(first->severity) : CheckKind::ERROR);
        for (QWidget* field : row.fields)
            field->setAccessibleDescription(row.label->text());
    }
    // The first error, else the first thing that may be refused.
    const auto gravest =
        std::min_element(found.begin(), found.end(),
                         [](const auto& a, const auto& b) { return a.severity < b.severity; });
    const bool told = gravest != found.end() && gravest->severity != Severity::NOTE;
    const bool wrong = told && gravest->severity == Severity::ERROR;
    const QString text = told ? translatedMessage(gravest->text) : QString();
    if (m_readOnly)
        showCheck(m_ui->labelSummary,
                  tr("The database was opened for reading only: changes can't be saved."),
                  CheckKind::NOTE);
    else
        showCheck(m_ui->labelSummary, text, told ? kindShown(gravest->severity) : CheckKind::ERROR);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(!wrong && !m_readOnly);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)
        ->setToolTip(wrong ? plainToolTip(text) : QString());
}

void DialogPointAttribute::updateChecks() {
    if (m_filling)
        return;
    const PointAttribute attribute = read();
    showFindings(findings(attribute));
    const QString conversion = m_stored && m_validGrid && !m_use.key
                                   ? translatedMessage(core::conversionHint(*m_stored, attribute))
                                   : QString();
    m_ui->labelConversion->setText(conversion);
    m_ui->labelConversion->setVisible(!conversion.isEmpty());
}

}  // namespace tarvo::window
