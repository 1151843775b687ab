#include "window/dialogs/dialogvalidate.h"

#include "qrb/error.h"
#include "ui_dialogvalidate.h"
#include "window/common/appearance.h"
#include "window/common/aside.h"
#include "window/common/guard.h"
#include "window/common/messages.h"
#include "window/dialogs/schemalist.h"

#include <QSignalBlocker>

namespace tarvo::window {

DialogValidate::DialogValidate(const QString& location, const qrb::Pointcloud& database,
                               QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogValidate>()),
      m_database(database),
      m_settings("") {
    m_ui->setupUi(this);
    useTextPaneFont(m_ui->editSchema);
    useTextPaneFont(m_ui->editResult);
    {
        const QSignalBlocker filling(m_ui->listSchema);
        m_schemas = fillSchemaList(m_ui->listSchema);
        m_ui->listSchema->setCurrentIndex(-1);
    }
    m_ui->listSchema->setCurrentIndex(schemaFor(m_ui->listSchema, location));
    m_ui->tabWidget->setCurrentWidget(m_ui->tabSchema);
    m_settings.restoreGeometryOf(this);
    if (m_settings.contains("Strict"))
        m_ui->editStrict->setChecked(m_settings.value("Strict").toBool());
}

DialogValidate::~DialogValidate() {
    m_settings.saveGeometryOf(this);
    m_settings.setValue("Strict", m_ui->editStrict->isChecked());
}

void DialogValidate::on_listSchema_currentIndexChanged(int) {
    const auto text = m_schemas.constFind(m_ui->listSchema->currentText());
    if (text != m_schemas.constEnd())
        m_ui->editSchema->setPlainText(*text);
}

void DialogValidate::on_buttonValidate_clicked() {
    m_ui->editResult->clear();
    m_ui->tabWidget->setCurrentWidget(m_ui->tabResult);
    guarded(this, [this] {
        const std::string schema = m_ui->editSchema->toPlainText().toStdString();
        const bool strict = m_ui->editStrict->isChecked();
        std::vector<std::string> found;
        const auto appendNotes = [&] {
            QString notes;
            for (const std::string& note : found)
                notes += '\n' + translatedMessage(note);
            if (!notes.isEmpty())
                m_ui->editResult->appendPlainText(notes);
        };
        try {
            workAside(this, tr("Validating the database..."), [&](const StepProgress&) {
                found = m_database.management().findings(schema, strict).notes;
                m_database.management().validate(schema, strict);
            });
        } catch (const qrb::Error& error) {
            // What the box hides behind its details stays readable here.
            m_ui->editResult->appendPlainText(translatedMessage(error.what()) + "\n\n" +
                                              translatedMessage(error.details()));
            if (error.code() == QRB_ERROR_VALIDATION)
                appendNotes();
            throw;
        }
        m_ui->editResult->appendPlainText(tr("No problems detected!"));
        appendNotes();
    });
}

void DialogValidate::on_buttonClose_clicked() {
    close();
}

}  // namespace tarvo::window
