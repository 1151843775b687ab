#include "engine/validation/format.h"

#include "engine/validation/ecmaregex.h"

#include <algorithm>
#include <utility>

namespace tarvo::engine::validation {

namespace {

bool isDecimal(char c) {
    return c >= '0' && c <= '9';
}

bool isAlphanumeric(char c) {
    return isDecimal(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isHexadecimal(char c) {
    return isDecimal(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

template <typename Passes>
bool allOf(std::string_view text, Passes passes) {
    return std::all_of(text.begin(), text.end(), passes);
}

// Calls the function with each part between separators until one does not pass.
template <typename Passes>
bool eachPart(std::string_view text, char separator, Passes passes) {
    for (;;) {
        const std::size_t end = text.find(separator);
        if (!passes(text.substr(0, end)))
            return false;
        if (end == std::string_view::npos)
            return true;
        text.remove_prefix(end + 1);
    }
}

// Takes a text apart from its beginning.
class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    bool atEnd() const { return m_rest.empty(); }
    bool eat(char c) { return eatAny(std::string_view(&c, 1)); }
    bool eatAny(std::string_view characters) {
        if (m_rest.empty() || characters.find(m_rest[0]) == std::string_view::npos)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    // A number of exactly two or four digits within limits; -1 for anything else.
    int number(std::size_t digits, int least, int most) {
        if (m_rest.size() < digits || !allOf(m_rest.substr(0, digits), isDecimal))
            return -1;
        int value = 0;
        for (const char c : m_rest.substr(0, digits))
            value = value * 10 + (c - '0');
        m_rest.remove_prefix(digits);
        return value < least || value > most ? -1 : value;
    }
    bool digits() {
        const std::size_t begin = m_rest.size();
        while (!m_rest.empty() && isDecimal(m_rest[0]))
            m_rest.remove_prefix(1);
        return m_rest.size() < begin;
    }

private:
    std::string_view m_rest;
};

// RFC 3339.
bool readDate(Reader& reader) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = reader.number(4, 0, 9999);
    if (year < 0 || !reader.eat('-'))
        return false;
    const int month = reader.number(2, 1, 12);
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month > 0 && reader.eat('-') &&
           reader.number(2, 1, days[month - 1] + (month == 2 && leap)) > 0;
}

bool readTime(Reader& reader) {
    const int hour = reader.number(2, 0, 23);
    if (hour < 0 || !reader.eat(':'))
        return false;
    const int minute = reader.number(2, 0, 59);
    if (minute < 0 || !reader.eat(':'))
        return false;
    const int second = reader.number(2, 0, 60);
    if (second < 0 || (reader.eat('.') && !reader.digits()))
        return false;
    int ahead = 0;
    if (!reader.eatAny("zZ")) {
        const bool behind = reader.eat('-');
        if (!behind && !reader.eat('+'))
            return false;
        const int hours = reader.number(2, 0, 23);
        if (hours < 0 || !reader.eat(':'))
            return false;
        const int minutes = reader.number(2, 0, 59);
        if (minutes < 0)
            return false;
        ahead = (behind ? -1 : 1) * (hours * 60 + minutes);
    }
    // A second is added at the end of a day of universal time only.
    constexpr int day = 24 * 60;
    return second < 60 || (hour * 60 + minute - ahead + day) % day == day - 1;
}

bool isDate(std::string_view text) {
    Reader reader(text);
    return readDate(reader) && reader.atEnd();
}

bool isTime(std::string_view text) {
    Reader reader(text);
    return readTime(reader) && reader.atEnd();
}

bool isDateTime(std::string_view text) {
    Reader reader(text);
    return readDate(reader) && reader.eatAny("tT") && readTime(reader) && reader.atEnd();
}

// RFC 1123.
bool isHostName(std::string_view text) {
    return text.size() <= 253 && eachPart(text, '.', [](std::string_view label) {
               return !label.empty() && label.size() <= 63 && label.front() != '-' &&
                      label.back() != '-' &&
                      allOf(label, [](char c) { return isAlphanumeric(c) || c == '-'; });
           });
}

// RFC 2673, 3.2.
bool isIpv4(std::string_view text) {
    int parts = 0;
    return eachPart(text, '.',
                    [&](std::string_view part) {
                        if (++parts > 4 || part.empty() || part.size() > 3 ||
                            !allOf(part, isDecimal) || (part.size() > 1 && part[0] == '0'))
                            return false;
                        int value = 0;
                        for (const char c : part)
                            value = value * 10 + (c - '0');
                        return value < 256;
                    }) &&
           parts == 4;
}

// RFC 4291, 2.2.
bool isIpv6(std::string_view text) {
    const std::size_t gap = text.find("::");
    int groups = 0;
    const auto readGroups = [&](std::string_view part, bool isLast) {
        return part.empty() || eachPart(part, ':', [&](std::string_view group) {
                   const bool atEnd = group.data() + group.size() == part.data() + part.size();
                   const bool isAddress = isLast && atEnd && isIpv4(group);
                   groups += isAddress ? 2 : 1;
                   return isAddress ||
                          (!group.empty() && group.size() <= 4 && allOf(group, isHexadecimal));
               });
    };
    if (gap == std::string_view::npos)
        return readGroups(text, true) && groups == 8;
    return readGroups(text.substr(0, gap), false) && readGroups(text.substr(gap + 2), true) &&
           groups < 8;
}

// RFC 5321, 4.1.2: Mailbox.
bool isMailbox(std::string_view text) {
    const auto isAtom = [](std::string_view part) {
        return !part.empty() && allOf(part, [](char c) {
            return isAlphanumeric(c) ||
                   std::string_view("!#$%&'*+-/=?^_`{|}~").find(c) != std::string_view::npos;
        });
    };
    const auto isQuoted = [](std::string_view local) {
        if (local.size() < 2 || local.front() != '"' || local.back() != '"')
            return false;
        local = local.substr(1, local.size() - 2);
        for (std::size_t i = 0; i < local.size(); ++i) {
            const bool escaped = local[i] == '\\';
            if (escaped && ++i == local.size())
                return false;
            if (local[i] < ' ' || local[i] > '~' || (local[i] == '"' && !escaped))
                return false;
        }
        return true;
    };
    const std::size_t at = text.rfind('@');
    if (at == std::string_view::npos || at > 64)
        return false;
    const std::string_view local = text.substr(0, at);
    std::string_view domain = text.substr(at + 1);
    if (!isQuoted(local) && !eachPart(local, '.', isAtom))
        return false;
    if (domain.size() < 2 || domain.front() != '[' || domain.back() != ']')
        return isHostName(domain);
    domain = domain.substr(1, domain.size() - 2);
    return domain.starts_with("IPv6:") ? isIpv6(domain.substr(5)) : isIpv4(domain);
}

// RFC 3986. Whether a part of an address has only characters that may stand for themselves, these
// and percent-encoded ones.
bool isEncoded(std::string_view text, std::string_view more) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '%') {
            if (text.size() - i < 3 || !isHexadecimal(text[i + 1]) || !isHexadecimal(text[i + 2]))
                return false;
            i += 2;
        } else if (!isAlphanumeric(c) &&
                   std::string_view("-._~!$&'()*+,;=").find(c) == std::string_view::npos &&
                   more.find(c) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

bool isAuthority(std::string_view text) {
    const std::size_t at = text.rfind('@');
    if (at != std::string_view::npos) {
        if (!isEncoded(text.substr(0, at), ":"))
            return false;
        text.remove_prefix(at + 1);
    }
    const std::size_t bracket = text.starts_with('[') ? text.find(']') : 0;
    if (bracket == std::string_view::npos)
        return false;
    const std::size_t colon = text.find(':', bracket);
    const std::string_view host = text.substr(0, colon);
    if (colon != std::string_view::npos && !allOf(text.substr(colon + 1), isDecimal))
        return false;
    if (bracket == 0)
        return isEncoded(host, "");
    if (bracket + 1 != host.size())
        return false;
    const std::string_view inside = host.substr(1, bracket - 1);
    if (!inside.starts_with('v') && !inside.starts_with('V'))
        return isIpv6(inside);
    // Addresses of a version to come.
    const std::size_t dot = inside.find('.');
    return dot != std::string_view::npos && dot > 1 && dot + 1 < inside.size() &&
           allOf(inside.substr(1, dot - 1), isHexadecimal) &&
           inside.find('%') == std::string_view::npos && isEncoded(inside.substr(dot + 1), ":");
}

// What follows the scheme, or stands without one.
bool isRelative(std::string_view text) {
    const std::size_t hash = std::min(text.find('#'), text.size());
    const std::size_t question = std::min(text.substr(0, hash).find('?'), hash);
    const auto isQuery = [](std::string_view part) {
        return part.empty() || isEncoded(part.substr(1), ":@/?");
    };
    if (!isQuery(text.substr(hash)) || !isQuery(text.substr(question, hash - question)))
        return false;
    std::string_view path = text.substr(0, question);
    if (path.starts_with("//")) {
        path.remove_prefix(2);
        const std::size_t end = std::min(path.find('/'), path.size());
        if (!isAuthority(path.substr(0, end)))
            return false;
        path.remove_prefix(end);
    }
    return isEncoded(path, ":@/");
}

std::size_t schemeLength(std::string_view text) {
    const std::size_t end = std::min(text.find_first_of(":/?#"), text.size());
    const std::string_view scheme = text.substr(0, end);
    const bool isScheme =
        end < text.size() && text[end] == ':' && !scheme.empty() && isAlphanumeric(scheme[0]) &&
        !isDecimal(scheme[0]) &&
        allOf(scheme, [](char c) { return isAlphanumeric(c) || c == '+' || c == '-' || c == '.'; });
    return isScheme ? end : 0;
}

bool isUri(std::string_view text) {
    const std::size_t scheme = schemeLength(text);
    return scheme > 0 && isRelative(text.substr(scheme + 1));
}

bool isUriReference(std::string_view text) {
    // A colon in the first part would make a scheme of it.
    const std::size_t end = text.find_first_of(":/?#");
    const bool isAmbiguous = end != std::string_view::npos && text[end] == ':';
    return isUri(text) || (!isAmbiguous && isRelative(text));
}

bool isUuid(std::string_view text) {
    constexpr std::string_view form = "00000000-0000-0000-0000-000000000000";
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char c, char wanted) {
        return wanted == '-' ? c == '-' : isHexadecimal(c);
    });
}

// RFC 6901.
bool isJsonPointer(std::string_view text) {
    if (!text.empty() && text[0] != '/')
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '~' && (i + 1 == text.size() || (text[i + 1] != '0' && text[i + 1] != '1')))
            return false;
    return true;
}

constexpr std::pair<std::string_view, FormatCheck> formats[] = {
    {"date-time", isDateTime}, {"date", isDate},
    {"time", isTime},          {"email", isMailbox},
    {"hostname", isHostName},  {"ipv4", isIpv4},
    {"ipv6", isIpv6},          {"uri", isUri},
    {"uuid", isUuid},          {"uri-reference", isUriReference},
    {"regex", isRegex},        {"json-pointer", isJsonPointer}};

}  // namespace

FormatCheck findFormat(std::string_view name) {
    for (const auto& [known, check] : formats)
        if (name == known)
            return check;
    return nullptr;
}

}  // namespace tarvo::engine::validation
