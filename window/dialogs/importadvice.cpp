#include "window/dialogs/importadvice.h"

#include "exchange/advice.h"

#include <QObject>
#include <QString>
#include <string>

namespace tarvo::window {

namespace {

std::string words(const QString& text) {
    return text.toStdString();
}

}  // namespace

void setAdvice() {
    exchange::Advice& advice = exchange::advice();
    advice.numberAnew = words(QObject::tr("Check \"Number the points anew\"."));
    advice.takeAsTheyAre =
        words(QObject::tr("Check that coordinates and times are taken as they are."));
    advice.roundValues = words(QObject::tr("Check that values are rounded."));
    advice.nameColumns = words(QObject::tr("Choose their attributes in the list of columns."));
    advice.mapCoordinates =
        words(QObject::tr("Of others, choose them in the list of columns: type x, y and z there."));
    advice.fewerAttributes =
        words(QObject::tr("Hide some of the columns: the attributes that are shown are exported."));
    advice.otherAttributes =
        words(QObject::tr("Hide its column: the attributes that are shown are exported."));
    advice.coordinateStep = words(QObject::tr("Export to PLY or XYZ, which hold such numbers."));
    advice.greaterStep =
        words(QObject::tr("Export fewer points by a filter, or export to PLY or XYZ."));
    advice.leaveOut = [](const std::string& attribute) {
        return words(QObject::tr("Uncheck the columns that go to %1 to do without it.")
                         .arg(QString::fromStdString(attribute)));
    };
    advice.redefine = [](const std::string&, const std::string& attribute, bool isWider) {
        return words(
            (isWider
                 ? QObject::tr(
                       "Redefine \"%1\" on the tab \"Point Attributes\" with a wider range.")
                 : QObject::tr(
                       "Redefine \"%1\" on the tab \"Point Attributes\" with a finer resolution."))
                .arg(QString::fromStdString(attribute)));
    };
}

}  // namespace tarvo::window
