#include "tests/window/samplewindow.h"

#include "qrb/error.h"

#include "tests/window/attributesamples.h"
#include "tests/window/guitestmain.h"

#include <QRandomGenerator>
#include <QtTest>
#include <array>
#include <exception>
#include <string>
#include <vector>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;

namespace {

pointcloud::PointAttribute signedAttribute(const std::string& name, std::uint32_t length) {
    pointcloud::PointAttribute result;
    result.name = name;
    result.title = "Title of " + name;
    result.length = length;
    result.minimumValue = -100;
    result.maximumValue = 100;
    result.storageClass = pointcloud::PointAttribute::VARIABLE;
    return result;
}

}  // namespace

SampleDatabase::SampleDatabase() {
    try {
        const tarvo::qrb::Context context("OFF", "");
        tarvo::qrb::Pointcloud database(context);
        pointcloud::CreateSettings settings(context);
        settings.primaryAttribute = defaultAttribute("tarvo.xyz");
        settings.chunkMode = 1;
        settings.chunkSize = 40;
        settings.compressionLevel = 30;
        settings.chunkSizeLOD = 0;
        database.create(path("sample.qrbx").toStdString(), settings);
        addNotes(database);
        addPoints(database);
    } catch (const std::exception& error) {
        m_error = error.what();
        if (const auto* failure = dynamic_cast<const tarvo::qrb::Error*>(&error))
            m_error += QString(" ") + failure->details();
    }
}

void SampleDatabase::addNotes(tarvo::qrb::Pointcloud& database) const {
    pointcloud::TransactionGuard transaction(
        database.transactions(), std::string(99, 'n') + "\xc3\xa4" + "cut", std::string(101, 'g'),
        "First line\nsecond line", "{\"b\":1.50,\"a\":[1,2]}");
    auto& metaData = database.metaData();
    metaData.set("own.note", "{\"a\": [1, 2.50]}");
    metaData.set("own.text", "no { JSON");
    metaData.set("own.signed", "[true]");
    metaData.set("own.empty", "");
    for (const int size : {1023, 1024, 8192, 8193})
        metaData.set("own." + std::to_string(size),
                     std::string(static_cast<std::size_t>(size), 'x'));
    metaData.createSignature("own.signed", 1, {0x0a, 0x1b});

    auto& attributes = database.pointAttributes();
    for (const char* name : {"tarvo.reflectance", "tarvo.class", "tarvo.timestamp"})
        attributes.addDefault(name);
    auto vector = signedAttribute("own.vector", 12);
    vector.tags = std::string(30, 't');
    vector.description = std::string(150, 'd');
    vector.compressionOptions = pointcloud::PointAttribute::DELTA_SHUFFLE;
    vector.resolution = 0.01;
    attributes.add(vector);
    auto single = signedAttribute("own.single", 1);
    single.tags = std::string(31, 't');
    single.description = std::string(151, 'd');
    single.storageClass = pointcloud::PointAttribute::DYNAMIC;
    single.compressionOptions = pointcloud::PointAttribute::DELTA;
    single.lodSettings = "{\"method\":\"first\"}";
    attributes.add(single);
    auto constant = signedAttribute("own.constant", 3);
    constant.storageClass = pointcloud::PointAttribute::CONSTANT;
    constant.compressionOptions = pointcloud::PointAttribute::SHUFFLE;
    constant.defaultValue = 7;
    attributes.add(constant);
    transaction.commit({1, {0x0a, 0x1b, 0x2c}});
}

// The same points in each run.
void SampleDatabase::addPoints(tarvo::qrb::Pointcloud& database) const {
    pointcloud::TransactionGuard transaction(database.transactions(), "Points", "tests 1.0");
    QRandomGenerator random(1);
    std::vector<std::array<double, 5>> values(points);
    for (auto& point : values) {
        for (double& value : point)
            value = random.bounded(100.0);
        point[4] = -point[4];
    }
    auto query = database.insert();
    const auto stride = static_cast<std::int32_t>(sizeof values[0]);
    query.bind("tarvo.xyz", pointcloud::DataType::DOUBLE, values.data(), stride);
    query.bind("tarvo.class", pointcloud::DataType::DOUBLE, &values[0][3], stride);
    query.bind("own.single", pointcloud::DataType::DOUBLE, &values[0][4], stride);
    query.next(points);
    transaction.commit();
}

QString SampleDatabase::copy(const QString& name) const {
    QFile::remove(path(name));
    return QFile::copy(path("sample.qrbx"), path(name)) ? path(name) : QString();
}

SampleWindow::SampleWindow(const QString& fileName) : m_window(showFreshWindow()) {
    if (!fileName.isEmpty())
        m_window->openDatabase(fileName, true);
}

SampleWindow::~SampleWindow() {
    ModalScript drop({ModalScript::press("Yes")});  // only where a transaction is pending
    m_window->close();
}

void SampleWindow::begin() const {
    run("actionTransactionBegin", {ModalScript::press("OK")});
}

void SampleWindow::press(const QKeySequence& keys) const {
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keySequence(m_window.get(), keys);
}
