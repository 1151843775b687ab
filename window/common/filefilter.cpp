#include "window/common/filefilter.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace tarvo::window {

const QString& databaseFileTypeFilter() {
    static const QString filter =
        "Point clouds (*.qrbx *.wdcx *.sdcx);;"
        "Waveforms (*.sodx *.sidx *.sbx *.sp? *.fwa *.owp);;"
        "Pixels/Voxels (*.vxls *.rmvx *.mvx *.mpx);;"
        "Plane Patches (*.ptch *.mtch);;"
        "Observation Objects (*.obsx *.opefx *.opp *.opx);;"
        "Control Objects (*.cpx *.pefx *.vtx);;"
        "Event Data (*.eifx *.epfx);;"
        "Housekeeping (*.hkx *.s10x *.ppx);;"
        "Trajectories (*.llhx *.pofx *.poqx);;"
        "Others (*.wex);;"
        "Generic (*.\?\?x *.\?\?\?x)";
    return filter;
}

const QString& pointFileTypeFilter() {
    static const QString filter =
        "Points of other programs (*.las *.laz *.ply *.ptx *.e57 *.csv *.xyz *.pts *.asc *.txt)";
    return filter;
}

QString databaseFileDialogFilter() {
    static const QRegularExpression pattern(R"(\*\.[\w\?\*]+)");
    QString all = "All supported types (";
    auto match = pattern.globalMatch(databaseFileTypeFilter());
    while (match.hasNext())
        all += match.next().captured() + ' ';
    return all.trimmed() + ");;" + databaseFileTypeFilter() + ";;All files (*.*)";
}

QString withDatabaseExtension(const QString& fileName) {
    return fileName.isEmpty() || !QFileInfo(fileName).suffix().isEmpty() ? fileName
                                                                         : fileName + ".qrbx";
}

}  // namespace tarvo::window
