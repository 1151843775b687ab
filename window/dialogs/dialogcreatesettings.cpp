#include "window/dialogs/dialogcreatesettings.h"

#include "ui_dialogcreatesettings.h"
#include "window/common/appearance.h"
#include "window/common/clipboard.h"
#include "window/common/filefilter.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"
#include "window/dialogs/attribute/dialogpointattribute.h"
#include "window/dialogs/schemalist.h"
#include "window/dialogs/sizelists.h"

#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <algorithm>
#include <limits>

namespace tarvo::window {

namespace {

QString settingsFileFilter() {
    return withAllFiles(QObject::tr("JSON files (*.json)"));
}

}  // namespace

bool DialogCreateSettings::edit(const qrb::Context& context, QString& location, Settings& settings,
                                std::string& schema, bool& optionals, QWidget* parent) {
    DialogCreateSettings dialog(context, settings, parent);
    dialog.write(location, settings, schema, optionals);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    location = dialog.location();
    dialog.readInto(settings);
    schema = dialog.schema();
    optionals = dialog.m_ui->editSchemaOptionals->isChecked();
    return true;
}

bool DialogCreateSettings::edit(const qrb::Context& context, QString& location, Settings& settings,
                                QWidget* parent) {
    DialogCreateSettings dialog(context, settings, parent);
    dialog.hideSchema();
    dialog.write(location, settings, {}, false);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    location = dialog.location();
    dialog.readInto(settings);
    return true;
}

DialogCreateSettings::DialogCreateSettings(const qrb::Context& context, const Settings& settings,
                                           QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogCreateSettings>()),
      m_context(context),
      m_settings(settings),
      m_store("DialogCreateSettings") {
    m_ui->setupUi(this);
    m_ui->editCacheSize->setMaximum(std::numeric_limits<int>::max());
    useTextPaneFont(m_ui->editSchemaText);
    // The slider is not to move while its value gets longer.
    auto* level = m_ui->labelCompressionLevelValue;
    level->setMinimumWidth(level->fontMetrics().horizontalAdvance("100 %"));
    m_ui->editSchemaList->addItem(tr("(none)"));
    m_schemas = fillSchemaList(m_ui->editSchemaList);
    m_ui->editSchemaList->setCurrentIndex(0);
    buildMenu();
    on_editChunkMode_currentIndexChanged(m_ui->editChunkMode->currentIndex());
    on_editLodMode_currentIndexChanged(m_ui->editLodMode->currentIndex());
    m_store.restoreGeometryOf(this);
}

DialogCreateSettings::~DialogCreateSettings() {
    // The size that is kept is that of the whole dialog.
    if (!m_reduced)
        m_store.saveGeometryOf(this);
}

void DialogCreateSettings::buildMenu() {
    auto* menu = new QMenu(this);
    menu->addAction(m_ui->actionDefaults);
    menu->addSeparator();
    menu->addActions({m_ui->actionLoad, m_ui->actionSave});
    menu->addSeparator();
    menu->addMenu(createCopyMenu(menu, this, SLOT(onCopyToClipboard())));
    m_ui->buttonMenu->setMenu(menu);
    // Shortcuts work only on actions of a visible widget.
    addActions({m_ui->actionLoad, m_ui->actionSave});
}

void DialogCreateSettings::hideSchema() {
    for (QWidget* widget :
         {static_cast<QWidget*>(m_ui->labelDatabaseSchema),
          static_cast<QWidget*>(m_ui->editSchemaList), static_cast<QWidget*>(m_ui->editSchemaText),
          static_cast<QWidget*>(m_ui->editSchemaOptionals)})
        widget->hide();
    m_reduced = true;
    // Nothing is left that would fill more.
    layout()->activate();
    resize(width(), sizeHint().height());
}

void DialogCreateSettings::write(const QString& location, const Settings& settings,
                                 const std::string& schema, bool optionals) {
    m_settings = settings;
    refreshPrimaryAttribute();
    writeChunks(settings);
    if (!writeLevelOfDetail(settings))
        return;
    m_ui->editLocation->setText(location);
    m_ui->editCacheSize->setValue(static_cast<int>(std::min<std::uint64_t>(
        settings.cacheSize, static_cast<std::uint64_t>(m_ui->editCacheSize->maximum()))));
    m_ui->editCompressionLevel->setValue(settings.compressionLevel);
    m_ui->editOptimizePointID->setCurrentIndex(settings.optimizePointID ? 1 : 0);
    const QString insertMode = QString::fromStdString(settings.pointInsertMode).toLower();
    m_ui->editPointInsertMode->setCurrentIndex(insertMode.startsWith("multi-pass") ? 1 : 0);
    m_ui->editSchemaText->setPlainText(QString::fromStdString(schema));
    m_ui->editSchemaOptionals->setChecked(optionals);
    on_editCompressionLevel_valueChanged(m_ui->editCompressionLevel->value());
}

void DialogCreateSettings::writeChunks(const Settings& settings) {
    bool isShown = false;
    if (settings.chunkMode == 1) {
        m_ui->editChunkMode->setCurrentIndex(0);
        isShown = showSize(m_ui->editChunkSizePts, settings.chunkSize);
    } else if (settings.chunkMode == 2) {
        m_ui->editChunkMode->setCurrentIndex(1);
        isShown = showSize(m_ui->editChunkSizeLvl, settings.chunkSize);
    } else {
        showError(this, tr("Invalid chunk mode: %0").arg(settings.chunkMode));
        return;
    }
    on_editChunkMode_currentIndexChanged(m_ui->editChunkMode->currentIndex());
    if (!isShown)
        showError(this, tr("Invalid chunk size: %0").arg(settings.chunkSize));
}

// Whether the widgets can show the mode.
bool DialogCreateSettings::writeLevelOfDetail(const Settings& settings) {
    bool isShown = false;
    if (settings.lodMode == 1) {
        m_ui->editLodMode->setCurrentIndex(0);
        isShown = showSize(m_ui->editLodSizeThinout, settings.chunkSizeLOD);
    } else if (settings.lodMode == 2) {
        m_ui->editLodMode->setCurrentIndex(1);
        isShown = showSize(m_ui->editLodSizeCombine, settings.chunkSizeLOD);
    } else {
        showError(this, tr("Invalid LOD mode: %0").arg(settings.lodMode));
        return false;
    }
    on_editLodMode_currentIndexChanged(m_ui->editLodMode->currentIndex());
    if (!isShown)
        showError(this, tr("Invalid LOD size: %0").arg(settings.chunkSizeLOD));
    return true;
}

void DialogCreateSettings::refreshPrimaryAttribute() {
    const auto& attribute = m_settings.primaryAttribute;
    m_ui->editPrimaryAttribute->setText(QString::fromStdString(attribute.name));
    fillEdgeLengths(m_ui->editChunkSizeLvl, attribute);
    fillCombineLevels(m_ui->editLodSizeCombine, attribute.length);
}

QString DialogCreateSettings::location() const {
    return m_ui->editLocation->text().trimmed();
}

void DialogCreateSettings::readInto(Settings& settings) const {
    settings.primaryAttribute = m_settings.primaryAttribute;
    if (m_ui->editChunkMode->currentIndex() == 0) {
        settings.chunkMode = 1;
        settings.chunkSize = static_cast<std::uint32_t>(m_ui->editChunkSizePts->value());
    } else if (m_ui->editChunkMode->currentIndex() == 1) {
        settings.chunkMode = 2;
        settings.chunkSize = static_cast<std::uint32_t>(m_ui->editChunkSizeLvl->currentIndex());
    }
    if (m_ui->editLodMode->currentIndex() == 0) {
        settings.lodMode = 1;
        settings.chunkSizeLOD = static_cast<std::uint32_t>(m_ui->editLodSizeThinout->value());
    } else if (m_ui->editLodMode->currentIndex() == 1) {
        settings.lodMode = 2;
        settings.chunkSizeLOD =
            static_cast<std::uint32_t>(m_ui->editLodSizeCombine->currentIndex());
    }
    settings.cacheSize = static_cast<std::uint64_t>(m_ui->editCacheSize->value());
    settings.compressionLevel = static_cast<std::uint8_t>(m_ui->editCompressionLevel->value());
    settings.optimizePointID = m_ui->editOptimizePointID->currentIndex() == 1;
    settings.pointInsertMode =
        m_ui->editPointInsertMode->currentIndex() == 1 ? "multi-pass" : "single-pass";
}

std::string DialogCreateSettings::schema() const {
    return m_ui->editSchemaText->toPlainText().toStdString();
}

void DialogCreateSettings::accept() {
    if (location().isEmpty()) {
        showError(this, tr("Location missing."));
        return;
    }
    QDialog::accept();
}

void DialogCreateSettings::on_buttonLocation_clicked() {
    // Whoever creates the file asks whether it may replace another one.
    const QString name = QFileDialog::getSaveFileName(this, tr("New Database"), location(),
                                                      databaseFileDialogFilter(), nullptr,
                                                      QFileDialog::DontConfirmOverwrite);
    if (!name.isEmpty())
        m_ui->editLocation->setText(QDir::toNativeSeparators(name));
}

void DialogCreateSettings::on_buttonPrimaryAttribute_clicked() {
    guarded(this, [this] {
        if (DialogPointAttribute::edit(m_settings.primaryAttribute,
                                       DialogPointAttribute::Purpose::PRIMARY, {}, this))
            refreshPrimaryAttribute();
    });
}

void DialogCreateSettings::on_editCompressionLevel_valueChanged(int value) {
    m_ui->labelCompressionLevelValue->setText(QString("%1 %").arg(value));
}

void DialogCreateSettings::on_editSchemaList_currentIndexChanged(int) {
    m_ui->editSchemaText->setPlainText(m_schemas.value(m_ui->editSchemaList->currentText()));
}

void DialogCreateSettings::on_editLocation_textChanged(const QString& location) {
    m_ui->editSchemaList->setCurrentIndex(schemaFor(m_ui->editSchemaList, location.trimmed()));
}

void DialogCreateSettings::on_editChunkMode_currentIndexChanged(int index) {
    m_ui->editChunkSizePts->setEnabled(index == 0);
    m_ui->editChunkSizeLvl->setEnabled(index == 1);
}

void DialogCreateSettings::on_editLodMode_currentIndexChanged(int index) {
    m_ui->editLodSizeThinout->setEnabled(index == 0);
    m_ui->editLodSizeCombine->setEnabled(index == 1);
}

void DialogCreateSettings::on_actionLoad_triggered() {
    const QString name =
        QFileDialog::getOpenFileName(this, tr("Load Settings"), {}, settingsFileFilter());
    if (name.isEmpty())
        return;
    guarded(this, [&] {
        Settings loaded(m_context);
        readInto(loaded);
        loaded.fromJson(readFile(name));
        write(location(), loaded, schema(), m_ui->editSchemaOptionals->isChecked());
    });
}

void DialogCreateSettings::on_actionSave_triggered() {
    const QString proposed = (location().isEmpty() ? "create-settings" : location()) + ".json";
    const QString name =
        chooseOutput(this, tr("Save Settings"), proposed, settingsFileFilter(), "json");
    if (name.isEmpty())
        return;
    guarded(this, [&] {
        Settings settings(m_context);
        readInto(settings);
        writeFile(name, settings.toJson());
    });
}

void DialogCreateSettings::on_actionDefaults_triggered() {
    guarded(this, [this] {
        write(location(), Settings(m_context), {}, false);
        m_ui->editSchemaList->setCurrentIndex(0);
    });
}

void DialogCreateSettings::onCopyToClipboard() {
    guarded(this, [this] {
        Settings settings(m_context);
        readInto(settings);
        copyToClipboard(QString::fromStdString(settings.toJson()),
                        qobject_cast<QAction*>(sender()));
    });
}

}  // namespace tarvo::window
