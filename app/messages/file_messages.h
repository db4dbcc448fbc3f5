// What the panel over the screen says about files of the user's that could not be read or written. Pure.
#pragma once

#include <filesystem>
#include <vector>

#include <QString>

#include "app/messages/panel_text.h"
#include "platform/file_problem.h"

namespace quillet {

// As the system's own programs write it.
QString ShownPath(const std::filesystem::path& path);

// No title when there are no problems.
PanelText DescribeFileProblems(const std::vector<FileProblem>& problems);

// Tells each problem once: those of `current` that were not in the last call's. A file that could be written
// again meanwhile, and fails anew, is told anew.
class ToldProblems {
 public:
  std::vector<FileProblem> New(std::vector<FileProblem> current);

 private:
  std::vector<FileProblem> told_;
};

}  // namespace quillet
