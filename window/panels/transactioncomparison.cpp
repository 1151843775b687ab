#include "window/panels/transactioncomparison.h"

#include "core/comparedstates.h"
#include "core/databasediff.h"
#include "core/difftext.h"
#include "window/common/aside.h"
#include "window/common/messages.h"
#include "window/dialogs/dialogcomparison.h"
#include "window/dialogs/plugin/outputtext.h"

#include <algorithm>

namespace tarvo::window {

namespace {

QString nameOf(const qrb::Pointcloud& database, std::uint32_t id) {
    return QString("%0 (%1)").arg(id).arg(
        QString::fromStdString(database.transactions().details(id).title).simplified().left(60));
}

}  // namespace

std::pair<std::uint32_t, std::uint32_t> comparedTransactions(
    const std::vector<std::uint32_t>& selected, const std::vector<std::uint32_t>& kept,
    std::uint32_t current) {
    const std::uint32_t one = selected.front();
    std::uint32_t other = selected.size() > 1 ? selected.back() : current;
    if (selected.size() == 1 && one == current) {
        const auto at = std::find(kept.begin(), kept.end(), current);
        if (at != kept.end() && at != kept.begin())
            other = *std::prev(at);
        else if (at != kept.end() && std::next(at) != kept.end())
            other = *std::next(at);
    }
    return {std::min(one, other), std::max(one, other)};
}

void compareTransactions(const DatabaseSession& session, std::uint32_t before, std::uint32_t after,
                         QWidget* parent) {
    const std::string fileName = session.fileName.toStdString();
    std::string report;
    workAside(parent, QObject::tr("Comparing transactions ..."), [&](const StepProgress& progress) {
        const qrb::Context context("OFF", "");
        const core::ComparedStates states(context, {fileName, before}, {fileName, after});
        const core::DatabaseDiff diff = core::compareDatabases(
            states.before(), states.after(), states.areOfOneFile(), {}, [&](int percent) {
                progress(QObject::tr("Reading points").toStdString(), percent / 100.0);
            });
        report = core::diffText(diff);
    });
    DialogComparison dialog(
        QObject::tr("From transaction %0\nto transaction %1")
            .arg(nameOf(*session.database, before), nameOf(*session.database, after)),
        translatedReport(report), parent);
    dialog.exec();
}

}  // namespace tarvo::window
