// Takes a text file of separated values apart, line by line.
#pragma once

#include "exchange/inputfile.h"
#include "exchange/table/pointsource.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::exchange::csv {

class LineReader {
public:
    // Throws Failure when the file can't be opened.
    explicit LineReader(const std::string& fileName, OpenProgress progress = {});
    // The file is open: the progress is told no more.
    void endOpening() { m_progress = {}; }

    void rewind();
    // The next line that is not blank, without its end; false at the end of the file. The text is
    // valid until the next call. Throws Failure for lines longer than 16 MB.
    bool next(std::string_view& line);

    std::uint64_t lineNumber() const { return m_lineNumber; }  // of the last line, from 1
    std::uint64_t position() const { return m_position; }      // bytes taken
    std::uint64_t size() const { return m_input.size; }

private:
    bool fill();

    std::string m_fileName;
    InputFile m_input;
    OpenProgress m_progress;
    std::uint64_t m_position = 0;
    std::uint64_t m_lineNumber = 0;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};

// Splits a line into fields; a field in double quotes may hold the separator, and a quote as two.
// Blanks around a field do not belong to it. storage keeps the texts of fields with doubled quotes.
// False: a quote is not closed.
bool splitLine(std::string_view line, char separator, std::vector<std::string_view>& fields,
               std::vector<std::string>& storage);

// The separator that occurs most often outside of quotes: comma, semicolon or tab.
char detectSeparator(std::string_view header);

}  // namespace tarvo::exchange::csv
