#include "common/textfiles.h"

#include "qrb/error.h"

#include <QFile>
#include <QSaveFile>

namespace tarvo::common {

namespace {

[[noreturn]] void fail(const char* text, const QString& fileName, const QFileDevice& file) {
    throw qrb::ErrorImpl(0, text,
                         QString("%1\n%2").arg(fileName, file.errorString()).toStdString());
}

}  // namespace

std::string readFile(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        fail("Failed to open input file!", fileName, file);
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail("Failed to read the input file!", fileName, file);
    return bytes.toStdString();
}

void writeFile(const QString& fileName, std::string_view bytes) {
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        fail("Failed to open output file!", fileName, file);
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (!file.commit())
        fail("Failed to write the output file!", fileName, file);
}

}  // namespace tarvo::common
