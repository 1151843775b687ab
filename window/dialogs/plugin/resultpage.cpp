#include "window/dialogs/plugin/resultpage.h"

#include "window/common/appearance.h"
#include "window/common/clipboard.h"
#include "window/common/filemanager.h"
#include "window/common/guard.h"
#include "window/common/textfiles.h"
#include "window/common/textformat.h"
#include "window/dialogs/plugin/outputtext.h"
#include "window/dialogs/plugin/pictureview.h"
#include "window/dialogs/plugin/resulttable.h"
#include "window/widgets/reportview.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

namespace tarvo::window {

namespace {

using Kind = plugin::Result::Kind;

// More would hold the window up; it can be saved.
constexpr std::size_t shownTextBytes = std::size_t{1} << 20;
constexpr std::size_t shownHtmlBytes = std::size_t{512} << 10;

struct KindName {
    QString title;
    const char* suffix;
    QString filter;
};

KindName nameOf(Kind kind) {
    switch (kind) {
        case Kind::HTML:
            return {QObject::tr("Report"), "html", QObject::tr("HTML (*.html)")};
        case Kind::PICTURE:
            return {QObject::tr("Picture"), "png", QObject::tr("Pictures (*.png)")};
        case Kind::TABLE:
            return {QObject::tr("Table"), "csv", QObject::tr("Comma-separated values (*.csv)")};
        case Kind::FILE:
            return {QObject::tr("File"), "", ""};
        case Kind::TEXT:
            break;
    }
    return {QObject::tr("Text"), "txt", QObject::tr("Texts (*.txt)")};
}

// A title as a part of a file's name.
QString fileTitle(QString title) {
    title = title.simplified().left(80);
    for (QChar& c : title)
        if (c.category() == QChar::Other_Control || QString("/\\:*?\"<>|").contains(c))
            c = '_';
    return title;
}

QLabel* remark(const QString& text) {
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

}  // namespace

ResultPage::ResultPage(std::shared_ptr<const PluginResult> result, const QString& folder,
                       QWidget* parent)
    : QWidget(parent), m_result(std::move(result)), m_folder(folder), m_buttons(new QHBoxLayout) {
    auto* layout = new QVBoxLayout(this);
    m_buttons->addStretch(1);
    m_view = createView();
    m_view->setObjectName("view");
    m_view->setAccessibleName(title());
    addButton("buttonCopy", tr("C&opy"), &ResultPage::copy);
    if (m_result->result.kind == Kind::FILE)
        addButton("buttonFolder", tr("Open &Folder"), &ResultPage::openFolder);
    else
        addButton("buttonSave", tr("&Save ..."), &ResultPage::save);
    layout->addWidget(m_view, 1);
    layout->addLayout(m_buttons);
}

QString ResultPage::title() const {
    const QString title = QString::fromStdString(m_result->result.title).simplified();
    return title.isEmpty() ? QString(nameOf(m_result->result.kind).title) : title;
}

void ResultPage::addButton(const QString& name, const QString& text, void (ResultPage::*slot)()) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, slot);
    m_buttons->addWidget(button);
}

QWidget* ResultPage::createView() {
    switch (m_result->result.kind) {
        case Kind::HTML:
            return createHtml();
        case Kind::PICTURE:
            return createPicture();
        case Kind::TABLE:
            return new ResultTable({m_result, &m_result->result.table}, this);
        case Kind::FILE:
            return createFile();
        case Kind::TEXT:
            break;
    }
    return createText();
}

QWidget* ResultPage::createText() {
    const std::string_view text = m_result->result.text;
    auto* pane = new QPlainTextEdit;
    pane->setReadOnly(true);
    pane->setLineWrapMode(QPlainTextEdit::NoWrap);
    useTextPaneFont(pane);
    QString shown = OutputText().add(text.substr(0, shownTextBytes));
    if (text.size() > shownTextBytes)
        shown += "\n\n" + tr("[Only the beginning is shown. \"Save ...\" writes all of it.]");
    pane->setPlainText(shown);
    return pane;
}

QWidget* ResultPage::createHtml() {
    if (m_result->result.text.size() > shownHtmlBytes)
        return remark(
            tr("This report is too large to be shown here.\n"
               "Save it, and look at it in a browser."));
    auto* view = new ReportView;
    view->setOpenLinks(false);
    view->setHtml(QString::fromStdString(m_result->result.text));
    return view;
}

QWidget* ResultPage::createPicture() {
    if (m_result->picture.isNull())
        return remark(tr("The picture can't be read."));
    auto* view = new PictureView(m_result->picture, this);
    auto* fitted = new QToolButton;
    fitted->setObjectName("buttonFit");
    fitted->setText(tr("&Fit to window"));
    fitted->setCheckable(true);
    fitted->setChecked(true);
    fitted->setToolTip(tr("Show the whole picture; off: pixel by pixel"));
    connect(fitted, &QToolButton::toggled, view, &PictureView::setFitted);
    m_buttons->insertWidget(0, fitted);
    m_buttons->insertWidget(
        1,
        new QLabel(
            tr("%0 x %1 pixels").arg(m_result->picture.width()).arg(m_result->picture.height())));
    return view;
}

QWidget* ResultPage::createFile() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* edit =
        new QLineEdit(QDir::toNativeSeparators(QString::fromStdString(m_result->result.text)));
    edit->setObjectName("editFile");
    edit->setAccessibleName(tr("File"));
    edit->setReadOnly(true);
    edit->setCursorPosition(0);
    layout->addWidget(new QLabel(tr("The plugin wrote the file")));
    layout->addWidget(edit);
    layout->addStretch(1);
    return page;
}

void ResultPage::copy() {
    const plugin::Result& result = m_result->result;
    const QString text = QString::fromStdString(result.text);
    switch (result.kind) {
        case Kind::TABLE:
            static_cast<ResultTable*>(m_view)->copy();
            break;
        case Kind::PICTURE:
            if (!m_result->picture.isNull())
                QApplication::clipboard()->setImage(m_result->picture);
            break;
        case Kind::HTML: {
            auto* data = new QMimeData;
            data->setHtml(text);
            if (const auto* view = qobject_cast<QTextEdit*>(m_view))
                data->setText(view->toPlainText());
            QApplication::clipboard()->setMimeData(data);
            break;
        }
        default:
            copyToClipboard(text);
    }
}

void ResultPage::save() {
    const KindName name = nameOf(m_result->result.kind);
    const QString fileName = QFileDialog::getSaveFileName(
        this, tr("Save Result"), QDir(m_folder).filePath(fileTitle(title()) + '.' + name.suffix),
        name.filter + ";;" + tr("All files (*)"));
    if (fileName.isEmpty())
        return;
    guarded(this, [&] {
        const WaitCursor waiting;
        const plugin::Result& result = m_result->result;
        writeFile(fileName, result.kind == Kind::TABLE ? plugin::csvOf(result.table) : result.text);
    });
}

void ResultPage::openFolder() {
    showInFileManager(QString::fromStdString(m_result->result.text));
}

}  // namespace tarvo::window
