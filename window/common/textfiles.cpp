#include "window/common/textfiles.h"

#include "core/outputplace.h"
#include "files/error.h"
#include "qrb/error.h"

#include <QFile>

namespace tarvo::window {

namespace {

[[noreturn]] void fail(const QString& text, const QString& fileName, const QString& reason) {
    throw qrb::ErrorImpl(0, text.toStdString(),
                         QString("%1\n%2").arg(fileName, reason).toStdString());
}

}  // namespace

std::string readFile(const QString& fileName, const QString& failure) {
    const QString failed = failure.isEmpty() ? QObject::tr("Failed to open input file!") : failure;
    if (qrb::Context("OFF", "").databaseFileTypeCheck(fileName.toStdString()))
        fail(failed, fileName, QObject::tr("The file is a database."));
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        fail(failed, fileName, file.errorString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail(QObject::tr("Failed to read the input file!"), fileName, file.errorString());
    return bytes.toStdString();
}

std::unique_ptr<files::WholeFile> openOutput(const QString& fileName, const QString& failed,
                                             const std::vector<std::string>& reads) {
    core::checkOutputPlace(qrb::Context("OFF", ""), fileName.toStdString(), reads);
    try {
        return std::make_unique<files::WholeFile>(fileName.toStdString());
    } catch (const files::FileError& error) {
        throw qrb::ErrorImpl(0, failed.toStdString(), error.what() + ('\n' + error.details()));
    }
}

void writeFile(const QString& fileName, std::string_view bytes) {
    const auto file = openOutput(fileName, QObject::tr("Failed to open output file!"));
    file->write(bytes);
    file->publish();
}

}  // namespace tarvo::window
