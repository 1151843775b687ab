#include "window/dialogs/plugin/plainfields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace tarvo::window {

LineField::LineField(const plugin::Parameter& parameter, QWidget* parent)
    : ParameterField(parameter, parent), m_edit(new QLineEdit) {
    setInput(m_edit);
    if (parameter.type == plugin::ParameterType::NODES)
        m_edit->setPlaceholderText(QObject::tr("all nodes"));
    if (!parameter.unit.empty()) {
        auto* unit = new QLabel(QString::fromStdString(parameter.unit));
        unit->setTextFormat(Qt::PlainText);
        row()->addWidget(unit);
    }
    connect(m_edit, &QLineEdit::textChanged, this, &ParameterField::changed);
}

QString LineField::text() const {
    return m_edit->text();
}

void LineField::setText(const QString& text) {
    m_edit->setText(text);
}

CheckField::CheckField(const plugin::Parameter& parameter, QWidget* parent)
    : ParameterField(parameter, parent), m_box(new QCheckBox(title().replace('&', "&&"))) {
    setInput(m_box);
    connect(m_box, &QCheckBox::toggled, this, &ParameterField::changed);
}

QString CheckField::text() const {
    return m_box->isChecked() ? "true" : "false";
}

void CheckField::setText(const QString& text) {
    m_box->setChecked(text == "true");
}

ChoiceField::ChoiceField(const plugin::Parameter& parameter, QWidget* parent)
    : ParameterField(parameter, parent), m_box(new QComboBox) {
    for (const plugin::Choice& choice : parameter.choices)
        m_box->addItem(QString::fromStdString(choice.title), QString::fromStdString(choice.value));
    m_box->setPlaceholderText(QObject::tr("choose one"));
    m_box->setCurrentIndex(-1);
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setInput(m_box);
    connect(m_box, qOverload<int>(&QComboBox::currentIndexChanged), this, &ParameterField::changed);
}

QString ChoiceField::text() const {
    return m_box->currentData().toString();
}

void ChoiceField::setText(const QString& text) {
    m_box->setCurrentIndex(
        m_box->findData(text, Qt::UserRole, Qt::MatchFixedString | Qt::MatchCaseSensitive));
}

}  // namespace tarvo::window
