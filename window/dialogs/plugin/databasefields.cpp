#include "window/dialogs/plugin/databasefields.h"

#include "core/error.h"
#include "core/namedfilter.h"
#include "window/common/filterhistory.h"
#include "window/dialogs/filterinsertmenu.h"
#include "window/widgets/filtercompletion.h"
#include "window/widgets/listcompleter.h"

#include <QComboBox>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>

namespace tarvo::window {

namespace {

using qrb::pointcloud::PointAttribute;

QStringList namesOf(const std::vector<PointAttribute>& attributes) {
    QStringList names;
    for (const PointAttribute& attribute : attributes)
        names += QString::fromStdString(attribute.name);
    return names;
}

QToolButton* menuButton(QMenu* menu, const QString& icon, const QString& name) {
    auto* button = new QToolButton;
    button->setIcon(QIcon(":/resources/gui/" + icon + ".png"));
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setAutoRaise(true);
    button->setStyleSheet("QToolButton::menu-indicator { image: none; }");
    button->setMenu(menu);
    return button;
}

QComboBox* editableBox() {
    auto* box = new QComboBox;
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    // Completion in the line would change what is typed.
    box->setCompleter(nullptr);
    return box;
}

}  // namespace

AttributeField::AttributeField(const plugin::Parameter& parameter, QWidget* parent)
    : ParameterField(parameter, parent), m_box(editableBox()) {
    setInput(m_box);
    connect(m_box, &QComboBox::currentTextChanged, this, &ParameterField::changed);
}

QString AttributeField::text() const {
    return m_box->currentText().trimmed();
}

void AttributeField::setText(const QString& text) {
    m_box->setEditText(text);
}

void AttributeField::setAttributes(const std::vector<PointAttribute>& attributes) {
    const QSignalBlocker filling(m_box);
    const QString text = m_box->currentText();
    const QStringList names = namesOf(attributes);
    m_box->clear();
    m_box->addItems(names);
    // Chosen is what is written there, not the first entry.
    m_box->setCurrentIndex(m_box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    m_box->setEditText(text);
    auto* completer = new QCompleter(names, m_box);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    m_box->setCompleter(completer);
}

AttributesField::AttributesField(const plugin::Parameter& parameter, QWidget* parent)
    : ParameterField(parameter, parent), m_edit(new QLineEdit), m_menu(new QMenu(this)) {
    setInput(m_edit);
    m_edit->setPlaceholderText(QObject::tr("names separated by commas"));
    row()->addWidget(menuButton(m_menu, "add", QObject::tr("Add an attribute")));
    connect(m_edit, &QLineEdit::textChanged, this, &ParameterField::changed);
}

QString AttributesField::text() const {
    return m_edit->text();
}

void AttributesField::setText(const QString& text) {
    m_edit->setText(text);
}

void AttributesField::setAttributes(const std::vector<PointAttribute>& attributes) {
    const QStringList names = namesOf(attributes);
    delete m_edit->completer();
    m_edit->setCompleter(new ListCompleter(names, m_edit));
    m_menu->clear();
    for (const QString& name : names)
        m_menu->addAction(QString(name).replace('&', "&&"), this, [this, name] { add(name); });
}

void AttributesField::add(const QString& name) {
    QString list = m_edit->text().trimmed();
    while (list.endsWith(','))
        list.chop(1);
    m_edit->setText(list.isEmpty() ? name : list + ", " + name);
    m_edit->setFocus();
}

FilterField::FilterField(const plugin::Parameter& parameter, QWidget* parent)
    : ParameterField(parameter, parent),
      m_box(editableBox()),
      m_menu(new FilterInsertMenu(m_box->lineEdit(), this)),
      m_completion(new FilterCompletion(m_box->lineEdit())) {
    setInput(m_box);
    m_box->lineEdit()->setPlaceholderText(QObject::tr("all points"));
    m_box->lineEdit()->setClearButtonEnabled(true);
    FilterHistory::show(m_box);
    row()->addWidget(menuButton(m_menu, "filter-menu", QObject::tr("Insert into the filter")));
    connect(m_box, &QComboBox::editTextChanged, this, &ParameterField::changed);
    connect(m_menu, &FilterInsertMenu::historyCleared, this,
            [this] { FilterHistory::show(m_box); });
}

QString FilterField::text() const {
    return m_box->currentText().trimmed();
}

void FilterField::setText(const QString& text) {
    m_box->setEditText(text);
}

std::string FilterField::given() const {
    try {
        return core::withNumbers(text().toStdString(), core::FilterAttributes::of(m_attributes));
    } catch (const qrb::Error& error) {
        throw core::Failure(error.what(), error.details());
    }
}

void FilterField::setAttributes(const std::vector<PointAttribute>& attributes) {
    m_attributes = attributes;
    m_menu->setAttributes(attributes);
    FilterHistory::show(m_box);
    m_completion->setAttributes(attributes);
}

}  // namespace tarvo::window
