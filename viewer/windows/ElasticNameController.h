#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <QPointer>
#include <QString>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace viewer {

/// A sheet that asks for the name of an elastic. A name that cannot be used is reported while it is
/// typed, and cannot be taken.
class ElasticNameController : public kelo::SheetController
{
    Q_OBJECT

public:
    static constexpr const char *name = "ElasticName"; ///< of the interface file

    struct Question
    {
        QString title; ///< of the sheet
        QString text;
        QString presentName;
        std::function<QString(const QString &)> problem; ///< what is wrong with a name, or empty
        std::function<void(const QString &)> answered;   ///< not called when the user cancels
    };

    ElasticNameController();
    /// Shows the sheet over the main window.
    void ask(Question question);

    void awakeFromNib() override;

private:
    void check();

    Question question_;
    QPointer<QLabel> label_;
    QPointer<QLineEdit> name_;
    QPointer<QLabel> reason_;
    QPointer<QPushButton> accept_;
};

} // namespace viewer
