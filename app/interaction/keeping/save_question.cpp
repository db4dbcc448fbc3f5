#include "app/interaction/keeping/save_question.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillet {
namespace {

constexpr std::size_t kNoKind = static_cast<std::size_t>(-1);

QString FilterOf(const SaveKind& kind) {
  return u"%1 (*%2)"_qs.arg(kind.name, kind.ending);
}

std::size_t KindOfName(const QString& name, const std::vector<SaveKind>& kinds) {
  for (std::size_t kind = 0; kind < kinds.size(); ++kind)
    if (name.endsWith(kinds[kind].ending, Qt::CaseInsensitive)) return kind;
  return kNoKind;
}

std::size_t KindOfFilter(const QString& filter, const std::vector<SaveKind>& kinds) {
  for (std::size_t kind = 0; kind < kinds.size(); ++kind)
    if (FilterOf(kinds[kind]) == filter) return kind;
  return 0;
}

QString ProposedFolder(const SaveQuestion& question) {
  if (!question.folder.isEmpty() && QDir(question.folder).exists()) return question.folder;
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documents).exists() ? documents : QDir::homePath();
}

// The name gets the ending of the kind that is chosen now.
void FollowKind(QFileDialog& dialog, const std::vector<SaveKind>& kinds, std::size_t kind) {
  dialog.setDefaultSuffix(kinds[kind].ending.mid(1));
  const QStringList files = dialog.selectedFiles();
  if (files.isEmpty()) return;
  QString name = QFileInfo(files.first()).fileName();
  const std::size_t before = KindOfName(name, kinds);
  if (before == kNoKind || before == kind) return;
  name.chop(kinds[before].ending.size());
  dialog.selectFile(name + kinds[kind].ending);
}

}  // namespace

std::optional<SaveAnswer> AskWhereToSave(QWidget& window, const SaveQuestion& question) {
  QFileDialog dialog(&window, question.title, ProposedFolder(question));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  QStringList filters;
  for (const SaveKind& kind : question.kinds)
    filters << FilterOf(kind);
  dialog.setNameFilters(filters);
  const SaveKind& proposed = question.kinds[question.kind];
  dialog.selectNameFilter(FilterOf(proposed));
  dialog.setDefaultSuffix(proposed.ending.mid(1));
  dialog.selectFile(question.name + proposed.ending);
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
    FollowKind(dialog, question.kinds, KindOfFilter(filter, question.kinds));
  });
  const int answer = dialog.exec();
  window.activateWindow();
  if (answer != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const QString file = dialog.selectedFiles().first();
  const std::size_t byName = KindOfName(file, question.kinds);
  return SaveAnswer{
      .file = file.toStdU16String(),
      .kind = byName != kNoKind ? byName : KindOfFilter(dialog.selectedNameFilter(), question.kinds)};
}

}  // namespace quillet
