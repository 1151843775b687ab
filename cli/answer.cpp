#include "cli/answer.h"

#include "cli/terminal.h"
#include "cli/texttable.h"
#include "numbers/numbertext.h"

namespace tarvo::cli {

void tellMade(std::uint64_t points, std::string_view how, const std::string& database,
              std::chrono::steady_clock::time_point begin) {
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    std::string seconds;
    numbers::appendFixed(seconds, time.count(), 1);
    note(counted(points, "point") + ' ' + std::string(how) + " \"" + database + "\" in " + seconds +
         " s.");
    if (manner().json) {
        answer("", [&](JsonText& json) {
            json.member("points", points);
            json.member("database", database);
        });
    }
}

}  // namespace tarvo::cli
