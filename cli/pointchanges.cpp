#include "cli/pointchanges.h"

#include "cli/json.h"
#include "cli/output.h"
#include "cli/texttable.h"

namespace tarvo::cli {

void printChanged(std::uint64_t points, std::uint64_t missing, const std::string& verb,
                  bool asJson) {
    if (asJson) {
        JsonText json;
        json.beginObject();
        json.member("points", points);
        json.member("missing", missing);
        json.endObject();
        print(json.text());
        return;
    }
    print(counted(points, "point") + " " + verb +
          (missing > 0 ? ", " + counted(missing, "id") + " not in the database" : "") + ".\n");
}

}  // namespace tarvo::cli
