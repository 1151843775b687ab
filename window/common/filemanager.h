// Shows files in the desktop's file manager.
#pragma once

#include <QString>

namespace tarvo::window {

// Opens the file's folder with the file selected. Where the file manager can't select, the folder
// is opened. Returns at once and tells no failure.
void showInFileManager(const QString& fileName);

}  // namespace tarvo::window
