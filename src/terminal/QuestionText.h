#pragma once

#include <QMessageBox>
#include <QString>

namespace zolt {

/// Shows `text` in a fixed-pitch font below the other texts of a message, as it is: nothing in it is markup.
void showPlainText(QMessageBox& box, const QString& text);

}  // namespace zolt
