#include "window/dialogs/dialoglicences.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace tarvo::window {

namespace {

// Of the longest line with the margins beside it, and some lines.
constexpr int shownColumns = 110, shownRows = 32;

}  // namespace

DialogLicences::DialogLicences(QWidget* parent) : QDialog(parent), m_settings("DialogLicences") {
    setWindowTitle(tr("Licences"));
    QFile file(":/resources/licences.txt");
    (void)file.open(QIODevice::ReadOnly);
    auto* layout = new QVBoxLayout(this);
    auto* text = new QPlainTextEdit(QString::fromUtf8(file.readAll()), this);
    text->setObjectName("editLicences");
    text->setAccessibleName(windowTitle());
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setMinimumSize(300, 120);
    layout->addWidget(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    const QFontMetrics metrics = text->fontMetrics();
    resize(metrics.horizontalAdvance(QString(shownColumns, 'x')),
           metrics.lineSpacing() * shownRows);
    m_settings.restoreGeometryOf(this);
}

DialogLicences::~DialogLicences() {
    m_settings.saveGeometryOf(this);
}

}  // namespace tarvo::window
