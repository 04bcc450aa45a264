#include "viewer/windows/ChangeLogDialog.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/text/DateText.h"
#include "viewer/windows/SearchableTable.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include <tuple>

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
QString namesOfKeys(const std::string &keys, ToothNotation notation)
{
    std::vector<std::string> members;
    for (const QString &key : QString::fromStdString(keys).split(QLatin1Char(',')))
        members.push_back(key.toStdString());
    return toothNames(members, notation);
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

/// One elastic of the list that the log has as JSON: its teeth, its size, its name.
QString elasticText(const QJsonObject &elastic, const kelo::DXDocumentModel &document,
                    ToothNotation notation)
{
    std::vector<std::string> members;
    for (const QJsonValue &member : elastic.value(QLatin1String("bracketSequence")).toArray())
        members.push_back(member.toString().toStdString());
    QStringList texts{toothNames(members, notation)};
    const QJsonValue size = elastic.value(QLatin1String("elasticsSizeTypeID"));
    if (size.isDouble()) {
        const auto &types = document.availableElasticsSizeTypes();
        const auto known = types.find(static_cast<long>(size.toInteger()));
        texts << (known == types.end() ? QString::number(size.toInteger())
                                       : QString::fromStdString(known->second->typeLabel));
    }
    const QJsonValue config = elastic.value(QLatin1String("elasticsConfigTypeID"));
    for (const auto &type : document.availableElasticsConfigTypes()) {
        if (config.isDouble() && type->typeID == config.toInteger())
            texts << QString::fromStdString(type->typeLabel);
    }
    return texts.join(QStringLiteral(", "));
}

/// Those elastics of one list that the other does not have. Lists as the log has them: all that
/// were placed before a change, or after it.
QString elasticsOnlyIn(const std::optional<QString> &list, const std::optional<QString> &other,
                       const kelo::DXDocumentModel &document, ToothNotation notation)
{
    const auto elasticsOf = [](const std::optional<QString> &text) {
        return QJsonDocument::fromJson(text.value_or(QString()).toUtf8()).array();
    };
    QHash<QJsonValue, int> inBoth;
    for (const QJsonValue &elastic : elasticsOf(other))
        ++inBoth[elastic];
    QStringList texts;
    for (const QJsonValue &elastic : elasticsOf(list)) {
        if (inBoth[elastic]-- <= 0) texts << elasticText(elastic.toObject(), document, notation);
    }
    return texts.join(QStringLiteral("; "));
}

/// What a value that no note has had means.
QString leftOutText(const StoredChange &change)
{
    if (change.what == QStringLiteral("tooth visibility")) return ChangeLog::tr("shown");
    if (change.what.endsWith(QStringLiteral("visibility"))) return ChangeLog::tr("hidden");
    if (change.what == QStringLiteral("bracket color")) return ChangeLog::tr("none");
    if (change.what.endsWith(QStringLiteral("approval"))) return ChangeLog::tr("not approved");
    return {};
}

QString valueText(const StoredChange &change, const std::optional<QString> &value,
                  const kelo::DXDocumentModel &document)
{
    if (!value) return leftOutText(change);
    if (*value == QStringLiteral("visible")) return ChangeLog::tr("shown");
    if (*value == QStringLiteral("hidden")) return ChangeLog::tr("hidden");
    if (change.what == QStringLiteral("bracket color")) return colorText(*value, document);
    if (change.what == QStringLiteral("elastic renamed")) return *value;
    return dateText(*value);
}

/// Before and after.
QStringList valueTexts(const StoredChange &change, const kelo::DXDocumentModel &document,
                       ToothNotation notation)
{
    const auto &[before, after] = std::tie(change.oldValue, change.newValue);
    const bool isAboutElastics = change.what.startsWith(QStringLiteral("elastic")) &&
                                 change.what != QStringLiteral("elastic renamed");
    if (isAboutElastics)
        return {elasticsOnlyIn(before, after, document, notation),
                elasticsOnlyIn(after, before, document, notation)};
    return {valueText(change, before, document), valueText(change, after, document)};
}

} // namespace

QStringList changeColumns(const StoredChange &change, const kelo::DXDocumentModel &document,
                          ToothNotation notation)
{
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(change.changedAt);
    const bool isAboutNote = change.what == QStringLiteral("note started");
    const QString key = QString::fromStdString(change.key);
    const auto title = titles().constFind(change.what);
    const QStringList values = valueTexts(change, document, notation);
    return {
        shortDateTime(when),
        change.noteDate ? shortDate(*change.noteDate) : QString(),
        title == titles().constEnd() ? change.what : ChangeLog::tr(*title),
        key.isEmpty() ? QString()
                      : (isAboutNote ? dateText(key) : namesOfKeys(change.key, notation)),
        values[0],
        values[1],
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
