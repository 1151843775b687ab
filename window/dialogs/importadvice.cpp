#include "window/dialogs/importadvice.h"

#include "exchange/advice.h"

namespace tarvo::window {

void setAdvice() {
    exchange::Advice& advice = exchange::advice();
    advice.numberAnew = "Check \"Number the points anew\".";
    advice.takeAsTheyAre = "Check that coordinates and times are taken as they are.";
    advice.roundValues = "Check that values are rounded.";
    advice.nameColumns = "Choose their attributes in the list of columns.";
    advice.mapCoordinates = "Of others, choose them in the list of columns: type x, y and z there.";
    advice.fewerAttributes =
        "Hide some of the columns: the attributes that are shown are exported.";
    advice.otherAttributes = "Hide its column: the attributes that are shown are exported.";
    advice.coordinateStep = "Export to PLY or XYZ, which hold such numbers.";
    advice.greaterStep = "Export fewer points by a filter, or export to PLY or XYZ.";
    advice.leaveOut = [](const std::string& attribute) {
        return "Uncheck the columns that go to " + attribute + " to do without it.";
    };
    advice.redefine = [](const std::string&, const std::string& attribute, bool isWider) {
        return "Redefine \"" + attribute + "\" on the tab \"Point Attributes\" with " +
               (isWider ? "a wider range." : "a finer resolution.");
    };
}

}  // namespace tarvo::window
