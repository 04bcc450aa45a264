#include "viewer/ChangeLogDialog.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/DateText.h"
#include "viewer/SearchableTable.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace viewer {
namespace {

/// The texts' context for translators.
struct ChangeLog
{
    Q_DECLARE_TR_FUNCTIONS(ChangeLog)
};

/// What the store calls a change, and what people read.
const QHash<QString, const char *> &titles()
{
    static const QHash<QString, const char *> all{
        {QStringLiteral("note started"), QT_TRANSLATE_NOOP("ChangeLog", "Note begun")},
        {QStringLiteral("tooth visibility"), QT_TRANSLATE_NOOP("ChangeLog", "Tooth")},
        {QStringLiteral("bracket visibility"), QT_TRANSLATE_NOOP("ChangeLog", "Bracket")},
        {QStringLiteral("button visibility"), QT_TRANSLATE_NOOP("ChangeLog", "Lingual button")},
        {QStringLiteral("bracket color"), QT_TRANSLATE_NOOP("ChangeLog", "Bracket colour")},
        {QStringLiteral("elastic placed"), QT_TRANSLATE_NOOP("ChangeLog", "Elastic placed")},
        {QStringLiteral("elastic removed"), QT_TRANSLATE_NOOP("ChangeLog", "Elastic removed")},
        {QStringLiteral("elastic color"), QT_TRANSLATE_NOOP("ChangeLog", "Elastic size")},
        {QStringLiteral("elastic named"), QT_TRANSLATE_NOOP("ChangeLog", "Elastic named")},
        {QStringLiteral("elastic renamed"), QT_TRANSLATE_NOOP("ChangeLog", "Elastic renamed")},
        {QStringLiteral("elastics refactored"),
         QT_TRANSLATE_NOOP("ChangeLog", "Elastics shortened")},
        {QStringLiteral("note approval"), QT_TRANSLATE_NOOP("ChangeLog", "Approval")},
        {QStringLiteral("treatment approval"),
         QT_TRANSLATE_NOOP("ChangeLog", "Approval of the treatment")},
    };
    return all;
}

/// "6,30" as the names of teeth.
QString toothNames(const std::string &keys, ToothNotation notation)
{
    QStringList names;
    for (const QString &key : QString::fromStdString(keys).split(QLatin1Char(',')))
        names << toothName(key.toStdString(), notation);
    return names.join(QStringLiteral(" \u2013 "));
}

QString dateText(const QString &isoDate)
{
    const QDate date = QDate::fromString(isoDate, Qt::ISODate);
    return date.isValid() ? shortDate(date) : isoDate;
}

QString colorText(const QString &typeID, const kelo::DXDocumentModel &document)
{
    if (typeID.toLong() == kelo::noBracketColorTypeID) return ChangeLog::tr("none");
    const auto &types = document.availableBracketColorTypes();
    const auto found = types.find(typeID.toLong());
    return found == types.end() ? typeID : QString::fromStdString(found->second->typeLabel);
}

QString valueText(const StoredChange &change, const std::optional<QString> &value,
                  const kelo::DXDocumentModel &document)
{
    if (!value) return {};
    if (*value == QStringLiteral("visible")) return ChangeLog::tr("shown");
    if (*value == QStringLiteral("hidden")) return ChangeLog::tr("hidden");
    if (change.what == QStringLiteral("bracket color")) return colorText(*value, document);
    if (change.what == QStringLiteral("elastic renamed")) return *value;
    if (change.what.startsWith(QStringLiteral("elastic")))
        return ChangeLog::tr(
            "%n elastics", nullptr,
            static_cast<int>(QJsonDocument::fromJson(value->toUtf8()).array().size()));
    return dateText(*value);
}

} // namespace

QStringList changeColumns(const StoredChange &change, const kelo::DXDocumentModel &document,
                          ToothNotation notation)
{
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(change.changedAt);
    const bool isAboutNote = change.what == QStringLiteral("note started");
    const QString key = QString::fromStdString(change.key);
    const auto title = titles().constFind(change.what);
    return {
        shortDateTime(when),
        change.noteDate ? shortDate(*change.noteDate) : QString(),
        title == titles().constEnd() ? change.what : ChangeLog::tr(*title),
        key.isEmpty() ? QString()
                      : (isAboutNote ? dateText(key) : toothNames(change.key, notation)),
        valueText(change, change.oldValue, document),
        valueText(change, change.newValue, document),
    };
}

ChangeLogDialog::ChangeLogDialog(const std::vector<StoredChange> &changes,
                                 const kelo::DXDocumentModel &document, ToothNotation notation,
                                 QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Changes"));
    auto *model = new QStandardItemModel(this);
    model->setHorizontalHeaderLabels(
        {tr("When"), tr("Note"), tr("What"), tr("Where"), tr("Before"), tr("After")});
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        QList<QStandardItem *> row;
        for (const QString &text : changeColumns(*change, document, notation)) {
            row << new QStandardItem(text);
            row.back()->setEditable(false);
        }
        row.front()->setData(change->changedAt, Qt::UserRole);
        model->appendRow(row);
    }
    auto *list = new SearchableTable(*model, tr("Changes"), tr("Search the changes"));
    list->table().resizeColumnsToContents();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(buttons);
    resize(760, 480);
}

} // namespace viewer
