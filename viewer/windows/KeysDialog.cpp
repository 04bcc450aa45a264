#include "viewer/windows/KeysDialog.h"

#include "viewer/windows/SearchableTable.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace viewer {
namespace {

QString withoutMnemonic(QString text)
{
    static const QString kept(QChar(0)); // a doubled ampersand is one that is read
    text.replace(QStringLiteral("&&"), kept);
    text.remove(QLatin1Char('&'));
    text.replace(kept, QStringLiteral("&"));
    return text;
}

void addRowsOf(const QMenu &menu, const QString &where, QList<KeyRow> &rows)
{
    for (const QAction *action : menu.actions()) {
        if (action->menu()) {
            addRowsOf(*action->menu(),
                      where + QStringLiteral(" \u203A ") + withoutMnemonic(action->text()), rows);
        } else if (!action->shortcut().isEmpty()) {
            rows.append({where, action->shortcut().toString(QKeySequence::NativeText),
                         withoutMnemonic(action->text())});
        }
    }
}

} // namespace

QList<KeyRow> viewKeyRows()
{
    const QString view = KeysDialog::tr("Treatment view");
    return {
        {view, KeysDialog::tr("Drag"),
         KeysDialog::tr("Across: turns the jaws. Up and down: opens the mouth.")},
        {view, KeysDialog::tr("Wheel"),
         KeysDialog::tr("Up and down: opens the mouth. Across: turns the jaws.")},
        {view, KeysDialog::tr("Left, Right"), KeysDialog::tr("Turn by 45 degrees")},
        {view, KeysDialog::tr("Up, Down"), KeysDialog::tr("Open the mouth by a step, or close it")},
        {view, KeysDialog::tr("0"), KeysDialog::tr("Front view with the mouth closed")},
        {view, KeysDialog::tr("Click with the elastics tool"),
         KeysDialog::tr(
             "On a bracket or a lingual button: begins an elastic or goes on with it; on "
             "its first member: places it. On an elastic: its menu.")},
        {view, KeysDialog::tr("Click with the bracket tool"),
         KeysDialog::tr("The menu of the tooth's bracket; for three seconds afterwards clicks do "
                        "the same to other teeth.")},
        {view, KeysDialog::tr("Control and click"),
         KeysDialog::tr("With the elastics tool: as with the bracket tool")},
        {view, KeysDialog::tr("Menu key"), KeysDialog::tr("The menu of what is under the pointer")},
        {view, KeysDialog::tr("Escape"),
         KeysDialog::tr("Gives up an elastic that is being strung, or leaves full screen")},
        {view, KeysDialog::tr("Double click"), KeysDialog::tr("Full screen and back")},
    };
}

QList<KeyRow> menuKeyRows(const QMainWindow &window)
{
    QList<KeyRow> rows;
    const auto *bar = window.findChild<QMenuBar *>();
    if (!bar) return rows;
    for (const QAction *action : bar->actions()) {
        if (action->menu()) addRowsOf(*action->menu(), withoutMnemonic(action->text()), rows);
    }
    return rows;
}

KeysDialog::KeysDialog(const QMainWindow &window, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("Keys and Mouse"));
    auto *model = new QStandardItemModel(this);
    model->setHorizontalHeaderLabels({tr("Where"), tr("Keys"), tr("What it does")});
    for (const KeyRow &row : viewKeyRows() + menuKeyRows(window)) {
        model->appendRow({new QStandardItem(row.where), new QStandardItem(row.keys),
                          new QStandardItem(row.effect)});
    }
    auto *list = new SearchableTable(*model, tr("Keys and mouse gestures"), tr("Search the keys"));
    list->table().setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(buttons);
    resize(860, 520);
    list->table().setColumnWidth(0, 150);
    list->table().setColumnWidth(1, 200);
    list->table().resizeRowsToContents();
    list->setFocus();
}

} // namespace viewer
