#include "window/dialogs/plugin/parameterfield.h"

#include "core/error.h"
#include "plugin/parameters.h"
#include "window/common/localnumbers.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"
#include "window/dialogs/plugin/databasefields.h"
#include "window/dialogs/plugin/filefield.h"
#include "window/dialogs/plugin/plainfields.h"

#include <QHBoxLayout>
#include <QStyle>

namespace tarvo::window {

using plugin::ParameterType;

namespace {

// Whether nothing means something: all points, all nodes, no attributes.
bool takesNothing(const plugin::Parameter& parameter) {
    return parameter.defaultValue || parameter.type == ParameterType::FILTER ||
           parameter.type == ParameterType::NODES;
}

QString rangeText(const plugin::Parameter& parameter) {
    if (parameter.minimum && parameter.maximum)
        return QObject::tr("%0 to %1")
            .arg(localNumber(*parameter.minimum), localNumber(*parameter.maximum));
    if (parameter.minimum)
        return QObject::tr("at least %1").arg(localNumber(*parameter.minimum));
    return parameter.maximum ? QObject::tr("at most %1").arg(localNumber(*parameter.maximum))
                             : QString();
}

}  // namespace

ParameterField* ParameterField::create(const plugin::Parameter& parameter, const QString& folder,
                                       QWidget* parent) {
    switch (parameter.type) {
        case ParameterType::BOOLEAN:
            return new CheckField(parameter, parent);
        case ParameterType::CHOICE:
            return new ChoiceField(parameter, parent);
        case ParameterType::ATTRIBUTE:
            return new AttributeField(parameter, parent);
        case ParameterType::ATTRIBUTES:
            return new AttributesField(parameter, parent);
        case ParameterType::FILTER:
            return new FilterField(parameter, parent);
        case ParameterType::INPUT_FILE:
        case ParameterType::OUTPUT_FILE:
            return new FileField(parameter, folder, parent);
        default:
            return new LineField(parameter, parent);
    }
}

ParameterField::ParameterField(const plugin::Parameter& parameter, QWidget* parent)
    : QWidget(parent), m_parameter(parameter), m_row(new QHBoxLayout(this)) {
    m_row->setContentsMargins(0, 0, 0, 0);
}

void ParameterField::setInput(QWidget* input) {
    m_input = input;
    input->setObjectName("edit_" + QString::fromStdString(m_parameter.name));
    input->setAccessibleName(title());
    input->setToolTip(hint());
    input->setWhatsThis(hint());
    m_row->addWidget(input, 1);
    setFocusProxy(input);
}

// Also for the label.
QString ParameterField::hint() const {
    QStringList lines;
    if (!m_parameter.description.empty())
        lines += QString::fromStdString(m_parameter.description);
    if (const QString range = rangeText(m_parameter); !range.isEmpty())
        lines += range + ' ' + QString::fromStdString(m_parameter.unit);
    return plainToolTip(lines.join('\n').trimmed());
}

std::string ParameterField::value() const {
    // Errors name the parameter as the form does.
    plugin::Parameter shown = m_parameter;
    shown.name = m_parameter.title;
    if (text().trimmed().isEmpty() && !takesNothing(m_parameter))
        throw core::Failure(QObject::tr("\"%1\" has no value.").arg(title()).toStdString());
    std::string json = plugin::valueFromText(shown, given());
    if (const QString wrong = objection(text()); !wrong.isEmpty())
        throw core::Failure(wrong.toStdString());
    return json;
}

std::string ParameterField::given() const {
    const bool isNumber = m_parameter.type == ParameterType::NUMBER;
    return (isNumber ? withPoint(text()) : text()).toStdString();
}

QString ParameterField::problem() const {
    try {
        (void)value();
        return {};
    } catch (const core::Failure& failure) {
        return translatedMessage(failure.what());
    }
}

void ParameterField::mark() {
    const QString wrong = problem();
    m_input->setToolTip(wrong.isEmpty() ? hint() : plainToolTip(wrong));
    if (m_input->property("invalid").toBool() == !wrong.isEmpty())
        return;
    m_input->setProperty("invalid", !wrong.isEmpty());
    m_input->style()->unpolish(m_input);
    m_input->style()->polish(m_input);
}

}  // namespace tarvo::window
