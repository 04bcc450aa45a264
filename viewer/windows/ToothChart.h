#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/text/ToothNotation.h"
#include "viewer/treatment/DocumentChanges.h"

#include <QWidget>

#include <map>
#include <memory>
#include <string>

class QToolButton;

namespace viewer {

/// Both arches as a chart, as one faces the patient: for every tooth whether it is there, its
/// bracket with its colour, and its lingual button, each of which a click changes. The arrow beside
/// a bracket opens the list of colours. A tooth that is out shows neither bracket nor button, as in
/// the view, and can only be placed again. While the chart is visible, it follows every change that
/// the document announces.
class ToothChart : public QWidget
{
    Q_OBJECT

public:
    explicit ToothChart(QWidget *parent = nullptr);

    void setDocument(std::shared_ptr<kelo::DXDocumentModel> document);
    void setNotation(ToothNotation notation);
    /// A note of the past, or an approved one, is read-only.
    void setMayEdit(bool mayEdit);

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// Shows the document as it is now.
    void refresh();
    struct Column
    {
        QToolButton *tooth, *bracket, *button;
    };
    void makeArch(const std::vector<std::string> &keys, int firstRow, bool isUpper);
    Column makeColumn(const std::string &key);
    void fillColorMenu(QToolButton &bracket, const std::string &key);
    void showTooth(const std::string &key, QToolButton &tooth, bool isThere);
    void showBracket(const std::string &key, QToolButton &bracket, bool toothIsThere);
    void showButton(const std::string &key, QToolButton &button, bool toothIsThere);

    std::shared_ptr<kelo::DXDocumentModel> document_;
    ToothNotation notation_ = ToothNotation::Universal;
    std::map<std::string, Column> columns_;
    bool mayEdit_ = true;
    DocumentChanges changes_; ///< last: it calls for the others
};

} // namespace viewer
