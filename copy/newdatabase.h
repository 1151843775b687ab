// A database file that appears under its name only when it is whole: it is written beside its place
// under another name, and removed again on every exit but publish().
#pragma once

#include "qrb/pointcloud.h"

#include <memory>
#include <string>

namespace tarvo::copy {

class NewDatabase {
public:
    // fileName: UTF-8. Throws qrb::Error if the file is there and may not be replaced (the advice
    // tells what to do then), or its folder is not.
    NewDatabase(const qrb::Context& context, const std::string& fileName, bool overwrite,
                std::string advice = "Give another name.");
    ~NewDatabase();
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    void create(const qrb::pointcloud::CreateSettings& settings);
    // By a file schema (JSON text); optionals: with what it marks optional.
    void create(const qrb::pointcloud::CreateSettings& settings, const std::string& schema,
                bool optionals);
    qrb::Pointcloud& cloud() { return *m_cloud; }
    // Closes the database and puts it in its place; nothing made from cloud() may be left. Throws
    // qrb::Error.
    void publish();

private:
    void refuseExisting() const;
    void makeRoom();
    void removeTemporary() noexcept;

    std::string m_fileName;
    std::string m_temporary;
    bool m_overwrite = false;
    std::string m_advice;
    bool m_created = false;
    std::unique_ptr<qrb::Pointcloud> m_cloud;
};

}  // namespace tarvo::copy
