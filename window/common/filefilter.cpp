#include "window/common/filefilter.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace tarvo::window {

const QString& databaseFileTypeFilter() {
    static const QString filter =
        QStringList{
            QObject::tr("Point clouds (*.qrbx *.wdcx *.sdcx)"),
            QObject::tr("Waveforms (*.sodx *.sidx *.sbx *.sp? *.fwa *.owp)"),
            QObject::tr("Pixels/Voxels (*.vxls *.rmvx *.mvx *.mpx)"),
            QObject::tr("Plane Patches (*.ptch *.mtch)"),
            QObject::tr("Observation Objects (*.obsx *.opefx *.opp *.opx)"),
            QObject::tr("Control Objects (*.cpx *.pefx *.vtx)"),
            QObject::tr("Event Data (*.eifx *.epfx)"),
            QObject::tr("Housekeeping (*.hkx *.s10x *.ppx)"),
            QObject::tr("Trajectories (*.llhx *.pofx *.poqx)"),
            QObject::tr("Others (*.wex)"),
            QObject::tr("Generic (*.\?\?x *.\?\?\?x)"),
        }
            .join(";;");
    return filter;
}

const QString& pointFileTypeFilter() {
    static const QString filter = QObject::tr(
        "Points of other programs (*.las *.laz *.ply *.ptx *.e57 *.csv *.xyz *.pts *.asc *.txt)");
    return filter;
}

QString withAllFiles(const QString& filter) {
    return filter + ";;" + QObject::tr("All files (*.*)");
}

QString databaseFileDialogFilter() {
    static const QRegularExpression pattern(R"(\*\.[\w\?\*]+)");
    QStringList all;
    auto match = pattern.globalMatch(databaseFileTypeFilter());
    while (match.hasNext())
        all += match.next().captured();
    return QStringList{QObject::tr("All supported types (%1)").arg(all.join(' ')),
                       databaseFileTypeFilter(), QObject::tr("All files (*.*)")}
        .join(";;");
}

QString withDatabaseExtension(const QString& fileName) {
    return fileName.isEmpty() || !QFileInfo(fileName).suffix().isEmpty() ? fileName
                                                                         : fileName + ".qrbx";
}

}  // namespace tarvo::window
