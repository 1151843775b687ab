// What users can do about faults of files, in the words of the program that they use: qrbtool has
// options for it, the window has boxes to check. The faults themselves are worded in this room.
#pragma once

#include <functional>
#include <string>

namespace tarvo::exchange {

// Sentences; empty: the program can't do that.
struct Advice {
    std::string numberAnew;       // ids that are taken or none
    std::string takeAsTheyAre;    // other reference systems and time bases
    std::string roundValues;      // that lie between those that an attribute holds
    std::string nameColumns;      // that nothing tells the meaning of
    std::string mapCoordinates;   // columns that are coordinates by other names
    std::string fewerAttributes;  // of points that take too much room
    std::string otherAttributes;  // than one whose values a format can't hold
    std::string coordinateStep;   // to round coordinates to, which lie on no grid
    std::string greaterStep;      // the same for those that span too many steps
    std::function<std::string(const std::string& attribute)> leaveOut;
    // Makes an attribute of a database hold values beyond its range (isWider), or between its
    // steps.
    std::function<std::string(const std::string& fileName, const std::string& attribute,
                              bool isWider)>
        redefine;
};

// That of the program, which sets it once, before it has threads. Until then there is none.
Advice& advice();

}  // namespace tarvo::exchange
