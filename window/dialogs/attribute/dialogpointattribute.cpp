#include "window/dialogs/attribute/dialogpointattribute.h"

#include "core/defaultattribute.h"
#include "core/namedvalues.h"
#include "ui_dialogpointattribute.h"
#include "window/common/appearance.h"
#include "window/common/clipboard.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/dialogs/attribute/attributesuggestions.h"
#include "window/dialogs/attribute/dialognamedvalues.h"
#include "window/dialogs/attribute/dialogpointattributelod.h"
#include "window/dialogs/attribute/storagechoices.h"
#include "window/widgets/listcompleter.h"

#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvo::window {

using qrb::pointcloud::PointAttribute;

namespace {

enum ShownText {
    SHOWN_NAME,
    SHOWN_TITLE,
    SHOWN_TAGS,
    SHOWN_DESCRIPTION,
    SHOWN_UNIT,
    SHOWN_LENGTH,
    SHOWN_LOD_SETTINGS
};

constexpr int longestText = 1'000'000;
constexpr int longestSummary = 200;

constexpr int descriptionLines = 4;  // that are seen at once

}  // namespace

bool DialogPointAttribute::edit(PointAttribute& attribute, Purpose purpose,
                                const QStringList& takenNames, QWidget* parent,
                                const PointAttribute* stored, bool readOnly) {
    DialogPointAttribute dialog(purpose, takenNames, parent);
    dialog.m_readOnly = readOnly;
    if (dialog.isEditing()) {
        dialog.m_stored = stored ? *stored : attribute;
        dialog.m_use.stored = &*dialog.m_stored;
    }
    dialog.m_typedBefore = stored || (purpose == Purpose::ADD && !attribute.name.empty());
    dialog.fill(attribute);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    attribute = dialog.read();
    return true;
}

DialogPointAttribute::DialogPointAttribute(Purpose purpose, const QStringList& takenNames,
                                           QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogPointAttribute>()),
      m_settings("DialogPointAttribute"),
      m_purpose(purpose) {
    m_ui->setupUi(this);
    m_use.primary = purpose == Purpose::PRIMARY;
    m_use.key = purpose == Purpose::EDIT_KEY;
    const QStringList taken = isEditing() ? QStringList() : takenNames;
    for (const QString& name : taken)
        m_use.takenNames.push_back(name.toStdString());
    setWindowTitle(purpose == Purpose::ADD       ? tr("Add Point Attribute")
                   : purpose == Purpose::PRIMARY ? tr("Primary Point Attribute")
                                                 : tr("Edit Point Attribute"));
    buildFields();
    buildMenu();
    buildSuggestions(taken);
    m_ui->paneForm->installEventFilter(this);
    m_settings.restoreGeometryOf(this);
}

DialogPointAttribute::~DialogPointAttribute() {
    m_settings.saveGeometryOf(this);
}

bool DialogPointAttribute::isEditing() const {
    return m_purpose == Purpose::EDIT || m_purpose == Purpose::EDIT_KEY;
}

void DialogPointAttribute::buildFields() {
    useTextPaneFont(m_ui->editDescription);
    m_ui->editDescription->setFixedHeight(
        descriptionLines * m_ui->editDescription->fontMetrics().lineSpacing() +
        2 * (m_ui->editDescription->frameWidth() +
             static_cast<int>(m_ui->editDescription->document()->documentMargin())));
    m_ui->editName->setReadOnly(isEditing());
    for (QLineEdit* edit : {m_ui->editName, m_ui->editTitle, m_ui->editTags, m_ui->editLodSettings})
        edit->setMaxLength(longestText);
    m_ui->editTags->setCompleter(new ListCompleter(suggestedTags(), this));
    m_ui->editUnitSymbol->addItem(QString());
    m_ui->editUnitSymbol->addItems(suggestedUnits());
    // "m" is not to become "m²" on its own.
    m_ui->editUnitSymbol->setCompleter(nullptr);
    fillStorageClasses(m_ui->editStorageClass);
    fillCompressions(m_ui->editCompressionOptions);

    const auto resolution = [this] { return m_ui->editResolution->number(); };
    for (NumberEdit* edit : {m_ui->editMinimumValue, m_ui->editMaximumValue, m_ui->editDefaultValue,
                             m_ui->editInvalidValue})
        edit->setStep(resolution);

    // The wheel scrolls the form and leaves values alone unless their field has the focus.
    for (QWidget* widget :
         {static_cast<QWidget*>(m_ui->editUnitSymbol), static_cast<QWidget*>(m_ui->editLength),
          static_cast<QWidget*>(m_ui->editStorageClass),
          static_cast<QWidget*>(m_ui->editCompressionOptions)}) {
        widget->setFocusPolicy(Qt::StrongFocus);
        widget->installEventFilter(this);
    }

    for (QLineEdit* edit : m_ui->paneForm->findChildren<QLineEdit*>())
        connect(edit, &QLineEdit::textChanged, this, &DialogPointAttribute::updateChecks);
    for (QComboBox* list : m_ui->paneForm->findChildren<QComboBox*>())
        connect(list, &QComboBox::currentTextChanged, this, &DialogPointAttribute::updateChecks);
    connect(m_ui->editDescription, &QPlainTextEdit::textChanged, this,
            &DialogPointAttribute::updateChecks);
}

void DialogPointAttribute::buildMenu() {
    auto* menu = new QMenu(this);
    menu->addMenu(createCopyMenu(this, this, SLOT(onCopyToClipboard())));
    menu->addAction(m_ui->actionPaste);
    menu->addSeparator();
    menu->addActions({m_ui->actionLoad, m_ui->actionSave});
    connect(menu, &QMenu::aboutToShow, this, &DialogPointAttribute::onMenuAboutToShow);
    m_ui->buttonMenu->setMenu(menu);
    // Shortcuts work only on actions of a visible widget.
    addActions({m_ui->actionLoad, m_ui->actionSave});
}

void DialogPointAttribute::buildSuggestions(const QStringList& takenNames) {
    fillSuggestions(m_ui->treeSuggestions, takenNames);
    m_ui->treeSuggestions->installEventFilter(this);
    m_ui->editSuggestionFilter->installEventFilter(this);
    m_ui->splitter->setStretchFactor(0, 1);
    m_ui->splitter->setStretchFactor(1, 1);
    m_ui->splitter->setSizes({620, 540});
    on_editSuggestionFilter_textChanged({});
    m_ui->buttonSuggestions->setChecked(!isEditing());
    m_ui->paneSuggestions->setVisible(!isEditing());
    if (m_purpose == Purpose::ADD)
        m_ui->editSuggestionFilter->setFocus();
    else
        (isEditing() ? m_ui->editTitle : m_ui->editName)->setFocus();
}

bool DialogPointAttribute::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && watched != m_ui->treeSuggestions && !widget->hasFocus()) {
            event->ignore();
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress &&
        (watched == m_ui->treeSuggestions || watched == m_ui->editSuggestionFilter)) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        // Return takes the row; it must not reach the dialog's default button.
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            takeSuggestion(m_ui->treeSuggestions->currentItem());
            return true;
        }
        if (key == Qt::Key_Down && watched == m_ui->editSuggestionFilter) {
            m_ui->treeSuggestions->setFocus();
            return true;
        }
    }
    if (watched == m_ui->paneForm &&
        (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest))
        fitForm();
    return QDialog::eventFilter(watched, event);
}

// The form scrolls up and down only. A scroll area knows nothing of labels that get higher where
// they get narrower.
void DialogPointAttribute::fitForm() {
    const int width = m_ui->layoutForm->minimumSize().width();
    m_ui->scrollForm->setMinimumWidth(width +
                                      m_ui->scrollForm->verticalScrollBar()->sizeHint().width());
    const auto* layout = m_ui->layoutForm;
    m_ui->paneForm->setMinimumHeight(
        layout->hasHeightForWidth()
            ? layout->minimumHeightForWidth(std::max(width, m_ui->scrollForm->viewport()->width()))
            : layout->minimumSize().height());
}

void DialogPointAttribute::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_filledTexts.isEmpty())
        updateChecks();
}

void DialogPointAttribute::fill(const PointAttribute& attribute) {
    m_filling = true;
    m_filled = attribute;
    m_ui->editName->setText(QString::fromStdString(attribute.name));
    m_ui->editTitle->setText(QString::fromStdString(attribute.title));
    m_ui->editTags->setText(QString::fromStdString(attribute.tags));
    m_ui->editDescription->setPlainText(QString::fromStdString(attribute.description));
    m_ui->editUnitSymbol->setEditText(QString::fromStdString(attribute.unitSymbol));
    // A length that is not possible is shown all the same, for the check to tell.
    const int length = static_cast<int>(
        std::min<std::uint32_t>(attribute.length, std::numeric_limits<int>::max()));
    m_ui->editLength->setRange(std::min(length, 1), std::max(length, 255));
    m_ui->editLength->setValue(length);
    m_ui->editMinimumValue->setNumber(attribute.minimumValue);
    m_ui->editMaximumValue->setNumber(attribute.maximumValue);
    m_ui->editResolution->setNumber(attribute.resolution);
    m_ui->editScaleFactor->setNumber(attribute.scaleFactor);
    m_ui->editDefaultValue->setNumber(attribute.defaultValue);
    const bool none = std::isnan(attribute.invalidValue);
    m_ui->boxNoInvalidValue->setChecked(none);
    m_ui->editInvalidValue->setNumber(none ? 0 : attribute.invalidValue);
    m_ui->editInvalidValue->setEnabled(!none);
    chooseValue(m_ui->editStorageClass, attribute.storageClass);
    chooseValue(m_ui->editCompressionOptions, attribute.compressionOptions);
    m_namedValues = attribute.namedValues;
    showNamedValues();
    m_ui->editLodSettings->setText(QString::fromStdString(attribute.lodSettings));
    for (QLineEdit* edit : m_ui->paneForm->findChildren<QLineEdit*>())
        edit->setCursorPosition(0);
    m_filledTexts = shownTexts();
    m_filling = false;
    updateChecks();
}

QStringList DialogPointAttribute::shownTexts() const {
    return {m_ui->editName->text(),
            m_ui->editTitle->text(),
            m_ui->editTags->text(),
            m_ui->editDescription->toPlainText(),
            m_ui->editUnitSymbol->currentText(),
            m_ui->editLength->text(),
            m_ui->editLodSettings->text(),
            m_ui->editMinimumValue->text(),
            m_ui->editMaximumValue->text(),
            m_ui->editResolution->text(),
            m_ui->editScaleFactor->text(),
            m_ui->editDefaultValue->text(),
            m_ui->boxNoInvalidValue->isChecked() ? QString() : m_ui->editInvalidValue->text(),
            m_ui->editStorageClass->currentText(),
            m_ui->editCompressionOptions->currentText(),
            QString::fromStdString(m_namedValues)};
}

PointAttribute DialogPointAttribute::read() const {
    const QStringList texts = shownTexts();
    const auto changed = [&](ShownText field) { return texts[field] != m_filledTexts[field]; };
    const auto text = [&](ShownText field, const std::string& filled) {
        return changed(field) ? texts[field].toStdString() : filled;
    };
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    PointAttribute attribute = m_filled;
    attribute.name = text(SHOWN_NAME, m_filled.name);
    attribute.title = text(SHOWN_TITLE, m_filled.title);
    attribute.tags = text(SHOWN_TAGS, m_filled.tags);
    attribute.description = text(SHOWN_DESCRIPTION, m_filled.description);
    attribute.unitSymbol = text(SHOWN_UNIT, m_filled.unitSymbol);
    if (changed(SHOWN_LENGTH))
        attribute.length = static_cast<std::uint32_t>(m_ui->editLength->value());
    attribute.minimumValue = m_ui->editMinimumValue->number().value_or(noNumber);
    attribute.maximumValue = m_ui->editMaximumValue->number().value_or(noNumber);
    attribute.resolution = m_ui->editResolution->number().value_or(noNumber);
    attribute.scaleFactor = m_ui->editScaleFactor->number().value_or(noNumber);
    attribute.defaultValue = m_ui->editDefaultValue->number().value_or(noNumber);
    attribute.invalidValue =
        m_ui->boxNoInvalidValue->isChecked()
            ? noNumber
            : m_ui->editInvalidValue->number().value_or(std::numeric_limits<double>::infinity());
    attribute.storageClass =
        static_cast<std::uint8_t>(m_ui->editStorageClass->currentData().toUInt());
    attribute.compressionOptions =
        static_cast<std::uint8_t>(m_ui->editCompressionOptions->currentData().toUInt());
    attribute.namedValues = m_namedValues;
    attribute.lodSettings = text(SHOWN_LOD_SETTINGS, m_filled.lodSettings);
    return attribute;
}

bool DialogPointAttribute::isTyped() const {
    return m_typedBefore || shownTexts() != m_filledTexts;
}

void DialogPointAttribute::take(PointAttribute attribute, const QString& question) {
    if (isTyped() && !confirmed(this, question))
        return;
    if (isEditing())
        attribute.name = m_filled.name;
    m_typedBefore = false;
    fill(attribute);
}

void DialogPointAttribute::takeSuggestion(const QTreeWidgetItem* row) {
    if (const auto* entry = suggestionOf(row))
        take(core::defaultAttribute(*entry),
             tr("Replace what was typed by the definition of \"%0\"?")
                 .arg(QString::fromStdString(entry->name)));
}

void DialogPointAttribute::on_editSuggestionFilter_textChanged(const QString& text) {
    const int shown = filterSuggestions(m_ui->treeSuggestions, text);
    m_ui->labelSuggestions->setText(tr("%0 of %1 default attributes")
                                        .arg(shown)
                                        .arg(m_ui->treeSuggestions->topLevelItemCount()));
}

void DialogPointAttribute::on_treeSuggestions_itemClicked(QTreeWidgetItem* item, int) {
    takeSuggestion(item);
}

void DialogPointAttribute::on_buttonSuggestions_toggled(bool shown) {
    m_ui->paneSuggestions->setVisible(shown);
    if (shown && isVisible())
        m_ui->editSuggestionFilter->setFocus();
}

void DialogPointAttribute::on_boxNoInvalidValue_toggled(bool none) {
    m_ui->editInvalidValue->setEnabled(!none);
    updateChecks();
}

void DialogPointAttribute::on_buttonNamedValues_clicked() {
    guarded(this, [this] {
        const PointAttribute attribute = read();
        if (DialogNamedValues::edit(m_namedValues, m_validGrid ? &attribute : nullptr, this)) {
            showNamedValues();
            updateChecks();
        }
    });
}

void DialogPointAttribute::on_buttonLodSettings_clicked() {
    guarded(this, [this] {
        std::string settings = read().lodSettings;
        const std::string before = settings;
        if (DialogPointAttributeLod::edit(settings, this) && settings != before)
            m_ui->editLodSettings->setText(QString::fromStdString(settings));
    });
}

void DialogPointAttribute::showNamedValues() {
    const auto values = core::readNamedValues(m_namedValues);
    QStringList texts;
    for (const core::NamedValue& each : values)
        texts += QString::fromStdString(each.understood ? each.value + '=' + each.name : each.name);
    QString summary = texts.join(", ");
    if (values.size() > 1)
        summary = QString("%0: %1").arg(QString::number(values.size()), summary);
    m_ui->editNamedValues->setText(values.empty() ? tr("none", "named values")
                                                  : summary.left(longestSummary));
    m_ui->editNamedValues->setCursorPosition(0);
}

}  // namespace tarvo::window
