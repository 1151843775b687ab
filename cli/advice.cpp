#include "cli/advice.h"

#include "exchange/advice.h"

namespace tarvo::cli {

void setAdvice() {
    exchange::Advice& advice = exchange::advice();
    advice.numberAnew = "Give --new-ids to number the points anew.";
    advice.takeAsTheyAre = "Give --crs-as-is to take coordinates and times as they are.";
    advice.roundValues = "Give --round to store the nearest values.";
    advice.nameColumns = "--columns names them.";
    advice.mapCoordinates = "Give --map COLUMN=x, and so on, for others.";
    advice.fewerAttributes = "Name fewer of them with --attributes.";
    advice.otherAttributes = "Name the other attributes with --attributes.";
    advice.coordinateStep = "Give --scale, for example --scale 0.001, to round coordinates to it.";
    advice.greaterStep = "Give a larger --scale to round coordinates to it, or a filter.";
    advice.leaveOut = [](const std::string& attribute) {
        return "Give --leave-out " + attribute + " to do without it.";
    };
    advice.redefine = [](const std::string& fileName, const std::string& attribute, bool isWider) {
        const std::string begin = "qrbtool attributes " + fileName;
        return std::string("Redefine the attribute with ") +
               (isWider ? "a wider range" : "a finer resolution") + ":\n  " + begin + " show " +
               attribute + " --json > attribute.json   (change it there)\n  " + begin +
               " put --json attribute.json";
    };
}

}  // namespace tarvo::cli
