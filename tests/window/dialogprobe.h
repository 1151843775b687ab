// Looks at what is in a dialog.
#pragma once

#include <QString>
#include <QStringList>

class QDialog;

// The name of its class.
QString kindOf(const QDialog* dialog);
bool isOkEnabled(QDialog* dialog);
// Entries of the menu that hangs on a dialog's button; "-" is a separator, what is disabled is in
// brackets. A menu indicator that is shown is an entry, too.
QStringList menuOf(QDialog* dialog);
// Those of the named widgets that can't be used.
QStringList disabledOf(QDialog* dialog, const QStringList& names);
