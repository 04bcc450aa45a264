#pragma once

#include <QDialog>
#include <QList>
#include <QString>

class QMainWindow;

namespace viewer {

/// A key or a gesture, and what it does.
struct KeyRow
{
    QString where; ///< "View", or the menu
    QString keys;
    QString effect;
};

/// What can be done in the treatment view with the mouse and the keyboard.
QList<KeyRow> viewKeyRows();
/// The commands of a window's menus that have a key, without mnemonics.
QList<KeyRow> menuKeyRows(const QMainWindow &window);

/// All keys and mouse gestures of a window as a list that can be searched.
class KeysDialog : public QDialog
{
    Q_OBJECT

public:
    KeysDialog(const QMainWindow &window, QWidget *parent = nullptr);
};

} // namespace viewer
