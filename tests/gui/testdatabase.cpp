#include "tests/gui/testdatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr qint64 samplePoints = 20'000;
constexpr qint64 realPoints = 110'000;

}  // namespace

QString runTool(const QStringList& arguments) {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QCoreApplication::applicationDirPath() + "/qrbtool", arguments);
    if (!tool.waitForFinished(120'000))
        return "qrbtool: " + tool.errorString();
    if (tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        return "qrbtool: " + QString::fromUtf8(tool.readAll());
    return {};
}

TestDatabase makeTestDatabase(const QString& folder) {
    TestDatabase result;
    result.fileName = QDir(folder).filePath("test.qrbx");
    const QString cloud = QDir(QRB_TEST_DATA).filePath("autzen_trim.las");
    result.real = *QRB_TEST_DATA != '\0' && QFileInfo::exists(cloud);
    result.pointCount = result.real ? realPoints : samplePoints;
    result.error = result.real
                       ? runTool({"import", cloud, result.fileName})
                       : runTool({"sample", "-n", QString::number(samplePoints), result.fileName});
    return result;
}
