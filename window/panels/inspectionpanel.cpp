#include "window/panels/inspectionpanel.h"

#include "ui_inspectionpanel.h"
#include "window/common/appearance.h"
#include "window/common/messageboxes.h"
#include "window/panels/textfindbar.h"
#include "window/widgets/reportview.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

namespace tarvo::window {

namespace {

struct ReportFormat {
    const char* text;
    std::uint8_t number;
};

constexpr ReportFormat reportFormats[] = {
    {QT_TRANSLATE_NOOP("QObject", "database report (plaintext)"), 1},
    {QT_TRANSLATE_NOOP("QObject", "database report (JSON)"), 2},
    {QT_TRANSLATE_NOOP("QObject", "database report (HTML)"), 3},
    {QT_TRANSLATE_NOOP("QObject", "attribute histograms (CSV)"), 4},
};

// Whether the library writes this format as HTML.
bool isHtml(std::uint8_t format) {
    return format == 3 || format == 4;
}

}  // namespace

InspectionPanel::InspectionPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::InspectionPanel>()) {
    m_ui->setupUi(this);
    buildToolBar();
    QFont font = m_ui->textInspectionResult->font();
    font.setFixedPitch(true);
    font.setKerning(false);
    font.setStyleHint(QFont::TypeWriter, QFont::PreferBitmap);
    m_ui->textInspectionResult->setFont(font);
    useTextPaneFont(m_ui->textInspectionResult);
    auto* findBar =
        new TextFindBar(m_ui->textInspectionResult, tr("find in the report"), this, "Inspection");
    findBar->servePanel();
    m_ui->layoutPanel->addWidget(findBar);
    m_findAction = addFindAction("actionInspectionFind", tr("Find a text in the report [Ctrl+F]"),
                                 [findBar] { findBar->open(); });
    m_ui->textInspectionResult->addAction(m_findAction);
}

InspectionPanel::~InspectionPanel() = default;

void InspectionPanel::buildToolBar() {
    auto* frame = new QFrame(this);
    auto* layout = new QHBoxLayout(frame);
    layout->setSpacing(4);
    layout->setContentsMargins(4, 4, 4, 4);
    m_format = new QComboBox(frame);
    m_format->setObjectName("editInspectionFormat");
    for (const ReportFormat& format : reportFormats)
        m_format->addItem(QObject::tr(format.text), format.number);
    layout->addWidget(new QLabel(tr("Format:"), frame));
    layout->addWidget(m_format);
    m_ui->toolBarInspection->addWidget(frame);
}

void InspectionPanel::refresh() {
    m_ui->textInspectionResult->clear();
    m_ui->actionInspectionUpdate->setEnabled(database() != nullptr);
}

void InspectionPanel::on_actionInspectionUpdate_triggered() {
    m_ui->textInspectionResult->selectAll();
    m_ui->textInspectionResult->clear();
    if (!database())
        return;
    const auto format = static_cast<std::uint8_t>(m_format->currentData().toUInt());
    QString report;
    aside(tr("Inspecting the database..."), [&](const StepProgress&) {
        report = QString::fromStdString(database()->inspect(format));
    });
    if (isHtml(format))
        m_ui->textInspectionResult->setHtml(report);
    else
        m_ui->textInspectionResult->setPlainText(report);
}

// Links inside of the report are followed, web pages are opened outside once the user agrees. What
// else a report may name, files and programs above all, is never opened.
void InspectionPanel::on_textInspectionResult_anchorClicked(const QUrl& link) {
    if (link.isRelative() && link.path().isEmpty() && link.hasFragment()) {
        m_ui->textInspectionResult->scrollToAnchor(link.fragment());
        return;
    }
    if (link.scheme() != "http" && link.scheme() != "https") {
        showWarning(this, tr("The report refers to something that is not opened:\n%1")
                              .arg(link.toDisplayString()));
        return;
    }
    if (confirmed(this, tr("Open this page in the web browser?\n%1").arg(link.toDisplayString())))
        QDesktopServices::openUrl(link);
}

}  // namespace tarvo::window
