// The window that has the database open, as the dialog that runs a plugin on it needs it.
#pragma once

#include "qrb/pointattribute.h"

#include <QString>
#include <string>
#include <vector>

namespace tarvo::window {

class PluginHost {
public:
    virtual ~PluginHost() = default;

    virtual bool isOpen() const = 0;
    // Whether a transaction is.
    virtual bool isPending() const = 0;
    // Absolute, also while the database is given up.
    virtual QString fileName() const = 0;
    // The file of the database library.
    virtual std::string library() const = 0;
    // None while no database is open. Throws qrb::Error.
    virtual std::vector<qrb::pointcloud::PointAttribute> attributes() const = 0;

    // Closes the database for a plugin that writes; asks before where that loses something. False:
    // the user does not want it, or the file is another one by now.
    virtual bool giveUp() = 0;
    // Opens the database again and shows it anew. Shows its errors; no database is open then.
    virtual void takeBack() = 0;
};

}  // namespace tarvo::window
