// A database file that appears under its name only when it is whole: it is written beside its place
// under another name, and removed again on every exit but publish().
#pragma once

#include "qrb/pointcloud.h"

#include <functional>
#include <memory>
#include <string>

namespace tarvo::core {

class NewDatabase {
public:
    // fileName: UTF-8; where it is a link, the file behind it is meant. overwrite: replace the
    // database that stands there; nothing else is ever replaced, nor one that somebody changes,
    // that is damaged or too new. Throws qrb::Error if the place can't be taken (the advice tells
    // what to do about a database that may not be replaced), or its folder is not there.
    NewDatabase(const qrb::Context& context, const std::string& fileName, bool overwrite,
                std::string advice = "Give another name.");
    ~NewDatabase();
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    void create(const qrb::pointcloud::CreateSettings& settings);
    // By a file schema (JSON text); optionals: with what it marks optional.
    void create(const qrb::pointcloud::CreateSettings& settings, const std::string& schema,
                bool optionals);
    const qrb::Context& context() const { return m_context; }
    qrb::Pointcloud& cloud() { return *m_cloud; }
    // Closes the database and puts it in its place, where a power cut can't take it away again;
    // nothing made from cloud() may be left. What stands there is checked again. Throws qrb::Error.
    void publish();

private:
    bool isTaken() const;
    void removeStrayJournal() const;
    void checkPlace() const;
    // Runs the work while nobody can change the database at the place.
    void whileHeld(const std::function<void()>& work) const;

    qrb::Context m_context;
    std::string m_fileName;   // as given
    std::string m_place;      // behind links
    std::string m_temporary;  // beside it
    bool m_overwrite = false;
    std::string m_advice;
    std::unique_ptr<qrb::Pointcloud> m_cloud;
};

}  // namespace tarvo::core
