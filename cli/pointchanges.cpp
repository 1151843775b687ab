#include "cli/pointchanges.h"

#include "cli/answer.h"
#include "cli/texttable.h"

namespace tarvo::cli {

void printChanged(std::uint64_t points, std::uint64_t missing, const std::string& verb) {
    answer(counted(points, "point") + " " + verb +
               (missing > 0 ? ", " + counted(missing, "id") + " not in the database" : "") + ".",
           [&](JsonText& json) {
               json.member("points", points);
               json.member("missing", missing);
           });
}

}  // namespace tarvo::cli
