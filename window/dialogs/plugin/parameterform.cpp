#include "window/dialogs/plugin/parameterform.h"

#include "window/common/filterhistory.h"
#include "window/common/programsettings.h"
#include "window/dialogs/plugin/parameterfield.h"

#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>

namespace tarvo::window {

using plugin::ParameterType;

ParameterForm::ParameterForm(const plugin::Manifest& manifest, const Selection& selection,
                             const QString& folder, QWidget* parent)
    : QWidget(parent), m_settingsGroup("DialogPlugin/" + QString::fromStdString(manifest.name)) {
    auto* layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->setRowWrapPolicy(QFormLayout::WrapLongRows);
    for (const plugin::Parameter& parameter : manifest.parameters)
        addField(ParameterField::create(parameter, folder, this));
    if (m_fields.empty())
        layout->addRow(new QLabel(tr("The plugin has no parameters.")));
    fill(selection);
    for (ParameterField* field : m_fields) {
        // What is only missing is no mistake yet.
        if (!field->text().trimmed().isEmpty())
            field->mark();
        connect(field, &ParameterField::changed, this, [this, field] {
            field->mark();
            emit changed();
        });
        for (QComboBox* box : field->findChildren<QComboBox*>())
            box->installEventFilter(this);
    }
}

void ParameterForm::addField(ParameterField* field) {
    m_fields.push_back(field);
    auto* layout = static_cast<QFormLayout*>(this->layout());
    if (field->hasTitle()) {
        layout->addRow(QString(), field);
        return;
    }
    auto* label = new QLabel(field->title().replace('&', "&&") + ':');
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(field);
    label->setToolTip(field->focusProxy()->toolTip());
    layout->addRow(label, field);
}

void ParameterForm::fill(const Selection& selection) {
    const DialogSettings settings(m_settingsGroup);
    for (ParameterField* field : m_fields) {
        const plugin::Parameter& parameter = field->parameter();
        const QString standard =
            parameter.defaultValue
                ? QString::fromStdString(plugin::textOfValue(parameter, *parameter.defaultValue))
                : QString();
        field->setText(standard);
        // What the points tab selects now, not what was selected the last time.
        if (standard.isEmpty() && parameter.type == ParameterType::FILTER) {
            field->setText(selection.filter);
            continue;
        }
        if (standard.isEmpty() && parameter.type == ParameterType::NODES) {
            field->setText(selection.nodes);
            continue;
        }
        const QString key = QString::fromStdString(parameter.name);
        if (!settings.contains(key))
            continue;
        field->setText(settings.value(key).toString());
        // The plugin may be another one by now, and the file gone.
        if (!field->problem().isEmpty())
            field->setText(standard);
    }
}

void ParameterForm::setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    for (ParameterField* field : m_fields)
        field->setAttributes(attributes);
}

plugin::Values ParameterForm::values() const {
    plugin::Values values;
    for (const ParameterField* field : m_fields)
        values[field->parameter().name] = field->value();
    return values;
}

QString ParameterForm::problem() const {
    for (const ParameterField* field : m_fields)
        if (const QString problem = field->problem(); !problem.isEmpty())
            return problem;
    return {};
}

QStringList ParameterForm::files(ParameterType type) const {
    QStringList names;
    for (const ParameterField* field : m_fields)
        if (field->parameter().type == type && !field->text().isEmpty())
            names += field->text();
    return names;
}

void ParameterForm::remember() const {
    DialogSettings settings(m_settingsGroup);
    settings.remove("");
    for (const ParameterField* field : m_fields) {
        settings.setValue(QString::fromStdString(field->parameter().name), field->text());
        if (field->parameter().type == ParameterType::FILTER && !field->text().isEmpty())
            FilterHistory::add(field->text());
    }
}

// Who scrolls the form must not change what the pointer passes.
bool ParameterForm::eventFilter(QObject* object, QEvent* event) {
    const auto* widget = qobject_cast<QWidget*>(object);
    if (event->type() == QEvent::Wheel && widget && !widget->hasFocus()) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(object, event);
}

}  // namespace tarvo::window
