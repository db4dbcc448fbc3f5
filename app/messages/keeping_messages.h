// What the window says about articles and sessions that the user keeps in files or on paper. Pure.
#pragma once

#include <filesystem>
#include <string>

#include <QString>

#include "app/messages/panel_text.h"

namespace quillet {

// Something has not been done that the user asked for.
PanelText ProblemNotice(const QString& title, const QStringList& lines);

// In a line.
QString DescribeSaved(const std::filesystem::path& file);
// The article is not yet read to its end; the file gets the rest when it is.
QString DescribeSavedSoFar(int lines);

// Nothing was changed in the file; `reason` is the system's own.
PanelText DescribeNotSaved(const std::filesystem::path& file, const std::string& reason);
// The article was left before it had been read to its end: the file holds so many lines.
PanelText DescribeSavedPart(const std::filesystem::path& file, int lines);
// The article was gone when the file had been chosen.
PanelText DescribeNothingToSave();

// `where` is a printer's name or a file's.
QString DescribePrinted(const QString& where);
QString DescribePrintWaits();
PanelText DescribeNotPrinted(const QString& where);
PanelText DescribeNothingToPrint();
PanelText DescribeNoPrinter();

// The session log.
QString DescribeLogBegun(const std::filesystem::path& file);
QString DescribeLogEnded(const std::filesystem::path& file);
// It has ended, or not begun. An empty `reason`: the disk does not keep up.
PanelText DescribeLogFailed(const std::filesystem::path& file, const std::string& reason);

}  // namespace quillet
