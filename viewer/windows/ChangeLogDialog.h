#pragma once

#include "viewer/store/TreatmentStore.h"
#include "viewer/text/ToothNotation.h"

#include <QDialog>
#include <QStringList>

#include <vector>

namespace kelo {
class DXDocumentModel;
} // namespace kelo

namespace viewer {

/// The columns of one change as people read it: when, of which note, what, where, before, after. Of
/// elastics those that a change removed or altered come before it, and what became of them, or
/// came new, after it. `document` names colours, sizes and configurations.
QStringList changeColumns(const StoredChange &change, const kelo::DXDocumentModel &document,
                          ToothNotation notation);

/// The log of a treatment's changes as a list that can be sorted and searched, newest first.
class ChangeLogDialog : public QDialog
{
    Q_OBJECT

public:
    ChangeLogDialog(const std::vector<StoredChange> &changes, const kelo::DXDocumentModel &document,
                    ToothNotation notation, QWidget *parent = nullptr);
};

} // namespace viewer
