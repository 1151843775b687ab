#include "mainwindow/metadatapanel.h"

#include "common/comingactions.h"
#include "common/numerictreewidgetitem.h"
#include "common/textformat.h"
#include "common/theme.h"
#include "qrb/error.h"
#include "ui_metadatapanel.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>

namespace {

// Bytes of a value that the list shows.
constexpr std::size_t previewSize = 8192;

enum MetaDataColumn { ITEM_NAME, ITEM_FORMAT, ITEM_SIZE, ITEM_VALUE };

// Writes numbers as they came, where the base would put them in quotes.
struct CompactWriter : rapidjson::Writer<rapidjson::StringBuffer> {
    using rapidjson::Writer<rapidjson::StringBuffer>::Writer;
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
        return RawValue(digits, length, rapidjson::kNumberType);
    }
};

// Turns a JSON document into its form without blanks, numbers as they are written; leaves other
// texts alone. Streams, so that deep nesting costs no stack.
bool compactJson(std::string& text) {
    rapidjson::Reader reader;
    rapidjson::MemoryStream source(text.data(), text.size());
    rapidjson::StringBuffer buffer;
    CompactWriter writer(buffer);
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    if (reader.Parse<flags>(source, writer).IsError())
        return false;
    text.assign(buffer.GetString(), buffer.GetSize());
    return true;
}

// False also where the library knows no signatures.
bool isSigned(const tarvo::qrb::pointcloud::MetaData& metaData, const std::string& name) {
    try {
        return metaData.verifySignature(name, 0, {});
    } catch (const tarvo::qrb::Error& error) {
        if (error.code() != QRB_ERROR_NOT_AVAILABLE)
            throw;
        return false;
    }
}

}  // namespace

MetaDataPanel::MetaDataPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::MetaDataPanel>()) {
    m_ui->setupUi(this);
    tarvo::common::announceForLater({m_ui->actionMetaDataAdd, m_ui->actionMetaDataEdit,
                                     m_ui->actionMetaDataRemove, m_ui->actionMetaDataSignature,
                                     m_ui->actionMetaDataExport, m_ui->actionMetaDataImport});
}

MetaDataPanel::~MetaDataPanel() = default;

void MetaDataPanel::refresh() {
    auto* tree = m_ui->treeMetaData;
    tree->clear();
    m_ui->labelMetaData->clear();
    if (!database())
        return;

    tree->setSortingEnabled(false);
    for (const std::string& name : database()->metaData().list())
        addRow(name);
    for (int column = ITEM_NAME; column <= ITEM_SIZE; ++column)
        tree->resizeColumnToContents(column);
    tree->sortByColumn(ITEM_NAME, Qt::AscendingOrder);
    tree->setSortingEnabled(true);
    m_ui->labelMetaData->setText(QString("Meta data items: %1").arg(tree->topLevelItemCount()));
}

void MetaDataPanel::addRow(const std::string& name) {
    auto& metaData = database()->metaData();
    std::string value = metaData.get(name);
    const std::size_t bytes = value.size();
    const bool locked = isSigned(metaData, name);
    const bool json = compactJson(value);

    auto* row = new NumericTreeWidgetItem(m_ui->treeMetaData);
    row->setText(ITEM_NAME, QString::fromStdString(name));
    row->setIcon(ITEM_NAME, QIcon(locked ? ":/resources/gui/object-locked.png"
                                         : ":/resources/gui/object-unlocked.png"));
    if (locked)
        row->setForeground(ITEM_NAME, tarvo::common::readable(QColor(Qt::darkBlue), palette()));
    row->setText(ITEM_FORMAT, json ? "JSON" : "text");
    row->setTextAlignment(ITEM_FORMAT, Qt::AlignCenter);
    row->setText(ITEM_SIZE, tarvo::common::humanReadableSize(bytes));
    row->setTextAlignment(ITEM_SIZE, Qt::AlignRight | Qt::AlignVCenter);
    row->setSortValue(ITEM_SIZE, static_cast<double>(bytes));

    QString preview = QString::fromUtf8(value.data(), std::min(value.size(), previewSize));
    if (value.size() > previewSize)
        preview += "...";
    row->setText(ITEM_VALUE, preview.simplified());
}
