#include "tests/window/testdatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr int samplePoints = 20'000;
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

TestDatabase makeSampleDatabase(const QString& folder, int points) {
    TestDatabase result;
    result.fileName = QDir(folder).filePath("test.qrbx");
    result.pointCount = points;
    result.error = runTool({"sample", "-n", QString::number(points), result.fileName});
    return result;
}

TestDatabase makeLongExport(const QString& folder) {
    TestDatabase result = makeSampleDatabase(folder, 1'000'000);
    QFile definition(QDir(folder).filePath("wide.json"));
    if (!result.error.isEmpty() || !definition.open(QIODevice::WriteOnly))
        return result;
    definition.write(R"({"name": "test.wide", "title": "Wide", "length": 255, "minimum_value": 0,
        "maximum_value": 1, "resolution": 0, "default_value": 0.123456789, "storage_class": 2})");
    definition.close();
    result.error = runTool({"attributes", result.fileName, "add", "--json", definition.fileName()});
    definition.remove();
    return result;
}

TestDatabase makeTestDatabase(const QString& folder) {
    const QString cloud = QDir(QRB_TEST_DATA).filePath("autzen_trim.las");
    if (*QRB_TEST_DATA == '\0' || !QFileInfo::exists(cloud))
        return makeSampleDatabase(folder, samplePoints);
    TestDatabase result;
    result.fileName = QDir(folder).filePath("test.qrbx");
    result.real = true;
    result.pointCount = realPoints;
    result.error = runTool({"import", cloud, result.fileName});
    return result;
}
