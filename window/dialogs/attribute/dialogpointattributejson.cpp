// DialogPointAttribute: definitions from and to files and the clipboard.
#include "window/dialogs/attribute/dialogpointattribute.h"

#include "core/json.h"
#include "core/jsonvalues.h"
#include "qrb/error.h"
#include "ui_dialogpointattribute.h"
#include "window/common/clipboard.h"
#include "window/common/filefilter.h"
#include "window/common/guard.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>

namespace tarvo::window {

using qrb::pointcloud::PointAttribute;

namespace {

QString attributeFileFilter() {
    return withAllFiles(QObject::tr("JSON files (*.json)"));
}

}  // namespace

std::optional<PointAttribute> DialogPointAttribute::readJson(const std::string& text) const {
    PointAttribute attribute;
    attribute.name.clear();
    try {
        attribute.fromJson(text);
    } catch (const qrb::Error&) {
        rapidjson::Document quoted;
        if (quoted.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size())
                .HasParseError() ||
            !quoted.IsString())
            throw;
        attribute.fromJson(core::jsonStringValue(quoted));
    }
    if (attribute.name.empty())
        return std::nullopt;
    return attribute;
}

void DialogPointAttribute::onMenuAboutToShow() {
    bool record = false;
    try {
        record = readJson(QApplication::clipboard()->text().toStdString()).has_value();
    } catch (const qrb::Error&) {
        record = false;  // the clipboard holds something else
    }
    m_ui->actionPaste->setEnabled(record);
}

void DialogPointAttribute::onCopyToClipboard() {
    guarded(this, [this] {
        copyToClipboard(QString::fromStdString(read().toJson()), qobject_cast<QAction*>(sender()));
    });
}

void DialogPointAttribute::on_actionPaste_triggered() {
    guarded(this, [this] {
        if (const auto pasted = readJson(QApplication::clipboard()->text().toStdString()))
            take(*pasted, tr("Replace what was typed by the definition on the clipboard?"));
    });
}

void DialogPointAttribute::on_actionLoad_triggered() {
    const QString name =
        QFileDialog::getOpenFileName(this, tr("Load Point Attribute"), {}, attributeFileFilter());
    if (name.isEmpty())
        return;
    guarded(this, [&] {
        const auto loaded = readJson(readFile(name));
        if (!loaded)
            throw qrb::ErrorImpl(
                0, tr("The file holds no point attribute.").toStdString(),
                tr("A JSON object with a member \"name\" is expected.").toStdString());
        take(*loaded, tr("Replace what was typed by the definition in the file?"));
    });
}

void DialogPointAttribute::on_actionSave_triggered() {
    const QString name =
        chooseOutput(this, tr("Save Point Attribute"), m_ui->editName->text() + ".json",
                     attributeFileFilter(), "json");
    if (name.isEmpty())
        return;
    guarded(this, [&] { writeFile(name, core::formattedJson(read().toJson())); });
}

}  // namespace tarvo::window
