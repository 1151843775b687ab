// Whether the files of an import, and the database that they go into, tell the same of their
// points.
#pragma once

#include "core/error.h"
#include "exchange/advice.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange {

// A list of files for one line of a message.
class FileList {
public:
    void add(const std::string& text) {
        constexpr int shown = 5;
        if (++m_count <= shown) {
            m_text += (m_text.empty() ? "" : ", ") + text;
        }
        m_more = m_count > shown ? " and " + std::to_string(m_count - shown) + " more" : "";
    }
    bool isEmpty() const { return m_count == 0; }
    std::string text() const { return m_text + m_more; }

private:
    std::string m_text;
    std::string m_more;
    int m_count = 0;
};

// How messages name what is told.
struct AgreementWords {
    const char* thing;    // "time base"
    const char* values;   // "Times"
    std::string between;  // what to do about it first, a sentence
};

// Told: has describe, describeBoth and isSame.
template <typename Told>
class Agreement {
public:
    // ofDatabase: what the database tells; isSilent: it tells nothing, but has points. asTheyAre:
    // what differs is taken nevertheless.
    Agreement(const AgreementWords& words, std::optional<Told> ofDatabase, bool isSilent,
              bool asTheyAre)
        : m_words(words),
          m_common(std::move(ofDatabase)),
          m_isDatabaseSilent(isSilent),
          m_asTheyAre(asTheyAre) {}

    // name: of a file, in quotes. Throws Failure where it differs.
    void add(const std::string& name, const std::optional<Told>& own) {
        if (!own) {
            m_silent.add(name);
        } else if (!m_common) {
            m_common = own;
            m_holder = name;
            if (m_isDatabaseSilent) {
                m_silent.add("the database");
            }
        } else if (!isSame(*m_common, *own)) {
            if (!m_asTheyAre) {
                throw core::Failure("The " + thing() + "s of " + m_holder + " and " + name +
                                        " differ: " + describeBoth(*m_common, *own) + ".",
                                    m_words.between + "\n" + advice().takeAsTheyAre);
            }
            m_foreign.add(name + " (" + describe(*own) + ")");
        }
    }
    // The first that was told.
    const std::optional<Told>& common() const { return m_common; }
    // Appends one on those that tell nothing, if something was told.
    void addNote(std::vector<std::string>& notes) const {
        if (m_common && !m_silent.isEmpty()) {
            notes.push_back("No " + thing() + " is told by " + m_silent.text() + ": taken as \"" +
                            describe(*m_common) + "\".");
        }
    }
    // For the changelog; empty: nothing differed.
    std::string foreign() const {
        return m_foreign.isEmpty()
                   ? std::string()
                   : std::string(m_words.values) + " were taken as they are into \"" +
                         describe(*m_common) + "\" from files in other " + thing() +
                         "s: " + m_foreign.text() + ".";
    }

private:
    std::string thing() const { return m_words.thing; }

    AgreementWords m_words;
    std::optional<Told> m_common;
    std::string m_holder = "the database";
    bool m_isDatabaseSilent;
    bool m_asTheyAre;
    FileList m_foreign;
    FileList m_silent;
};

}  // namespace tarvo::exchange
