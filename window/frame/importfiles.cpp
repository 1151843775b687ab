#include "window/frame/importfiles.h"

#include "exchange/import/commonorigin.h"
#include "exchange/sourceopener.h"
#include "window/common/localnumbers.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"

#include <map>

namespace tarvo::window {

namespace {

// The values of the first points, as the range beside them is written.
QString firstText(const std::vector<std::string>& values) {
    QStringList texts;
    for (const QString& value : textList(values)) {
        bool isNumber = false;
        (void)value.toDouble(&isNumber);
        texts += isNumber ? localNumber(value) : value;
    }
    return texts.join("   ");
}

// The values that are shown of columns: of one name and attribute in all files as of one.
class ColumnList {
public:
    void add(const exchange::PointSource& source, const exchange::FileSurvey& survey) {
        for (std::size_t i = 0; i < survey.columns.size(); ++i) {
            const exchange::Column& column = source.columns()[i];
            const exchange::FileSurvey::FoundColumn& found = survey.columns[i];
            const auto [place, isNew] = m_places.try_emplace(column.descriptor(), m_columns.size());
            if (isNew) {
                m_columns.push_back({QString::fromStdString(column.name),
                                     QString::fromStdString(column.descriptor()),
                                     {},
                                     firstText(found.first)});
                m_summaries.push_back(found.summary);
            } else {
                m_summaries[place->second].merge(found.summary);
            }
        }
    }
    std::vector<ImportColumn> take() {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const exchange::ColumnSummary& summary = m_summaries[i];
            m_columns[i].range = summary.hasNumbers() ? localNumber(summary.minimum()) + " ... " +
                                                            localNumber(summary.maximum())
                                                      : QObject::tr("no numbers");
        }
        return std::move(m_columns);
    }

private:
    std::map<std::string, std::size_t> m_places;
    std::vector<ImportColumn> m_columns;
    std::vector<exchange::ColumnSummary> m_summaries;
};

}  // namespace

void ImportFiles::read(const QStringList& fileNames, const StepProgress& progress) {
    exchange::SourceOpener opener;
    for (const QString& name : fileNames) {
        const std::string fileName = name.toStdString();
        const std::string step = QObject::tr("Opening %1").arg(name).toStdString();
        progress(step, 0);
        m_files.push_back(
            opener.open(fileName, [&](double fraction) { progress(step, fraction); }));
    }
    for (const auto& file : m_files)
        m_surveys.push_back(exchange::survey(*file, progress));
}

void ImportFiles::describe(ImportFindings& findings) const {
    ColumnList columns;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        columns.add(*m_files[i], m_surveys[i]);
        findings.pointCount += m_surveys[i].pointCount;
    }
    findings.columns = columns.take();
    findings.plan = [this](const exchange::ColumnMap& map) {
        const Mapped files = mapped(map);
        return exchange::planImport(files.sources, files.surveys, primary);
    };
    // Whoever has more of them can say which are the coordinates.
    for (const auto& file : m_files)
        if (file->columns().size() < 3)
            (void)findings.plan({});
    describeOrigin(findings);
}

// What differs can still be left out or taken as it is.
void ImportFiles::describeOrigin(ImportFindings& findings) const {
    const exchange::PointSources sources = mapped({}).sources;
    try {
        (void)exchange::commonOrigin(sources, nullptr, {}, false);
    } catch (const core::Failure& failure) {
        findings.notes += translatedMessage(failure.what());
    }
    const auto common = exchange::commonOrigin(sources, nullptr, {}, true);
    findings.notes += translatedMessages(common.notes);
    if (common.origin.system)
        findings.system = translatedMessage(core::describe(*common.origin.system));
}

ImportFiles::Mapped ImportFiles::mapped(const exchange::ColumnMap& map) const {
    Mapped files;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        auto source = std::make_unique<exchange::MappedSource>(m_files[i], map);
        files.surveys.push_back(m_surveys[i].of(source->innerColumns()));
        files.sources.push_back(std::move(source));
    }
    return files;
}

}  // namespace tarvo::window
