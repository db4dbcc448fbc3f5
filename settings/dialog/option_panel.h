// What the options dialog knows of each of its tabs, and the pieces that the tabs are laid out with.
// User-interface thread.
#pragma once

#include <initializer_list>

#include <QLabel>
#include <QString>
#include <QWidget>

#include "settings/settings_store.h"

class QBoxLayout;
class QFormLayout;
class QVBoxLayout;

namespace quillet {

class SettingControls;

class OptionPanelWidget : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  // Sets the controls from the store.
  virtual void Open(const SettingsStore& store) = 0;
  // What keeps the controls from being stored, in words for the user; empty when nothing does. Gives the
  // keyboard to the control that is at fault.
  virtual QString Complaint() { return {}; }
  // Writes the controls to the store, which the dialog then applies and saves.
  virtual void Store(SettingsStore& store) const = 0;

 protected:
  struct Columns {
    QVBoxLayout* left;
    QVBoxLayout* right;
  };
  // Lays the panel out as two columns of one height and width, at its top.
  Columns MakeColumns();
  // A titled group at the end of `column`, laid out as a form.
  QFormLayout* AddGroup(QBoxLayout& column, const QString& title);
  // The same with the controls of these fields in it, and a word about those that are grey.
  QFormLayout* AddGroup(QBoxLayout& column, const QString& title, SettingControls& controls,
                        std::initializer_list<SettingField> fields);
};

// A remark beside a control, quieter than its label in a light and in a dark look. Room is kept for all of
// its lines.
class NoteLabel : public QLabel {
  Q_OBJECT

 public:
  explicit NoteLabel(const QString& text, QWidget* parent = nullptr);

 protected:
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void ApplyColour();
};

}  // namespace quillet
