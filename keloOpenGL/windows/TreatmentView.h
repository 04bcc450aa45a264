#pragma once

#include "base/Export.h"
#include "document/DXDocumentModel.h"
#include "keloOpenGL/treatment/DXOpenGL.h"

#include <QWidget>

#include <memory>

namespace kelo {

/// The treatment view as a widget that interface files can hold, under the class name
/// "kelo::TreatmentView". The widget shares the view with whoever asks for it.
class KELO_EXPORT TreatmentView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(std::shared_ptr<kelo::DXDocumentModel> documentModel READ documentModel WRITE
                   setDocumentModel NOTIFY documentModelChanged)

public:
    explicit TreatmentView(QWidget *parent = nullptr);
    ~TreatmentView() override;

    const std::shared_ptr<DXOpenGL> &view() const { return view_; }

    std::shared_ptr<DXDocumentModel> documentModel() const { return view_->documentModel(); }
    void setDocumentModel(const std::shared_ptr<DXDocumentModel> &model);

signals:
    void documentModelChanged();

private:
    std::shared_ptr<DXOpenGL> view_;
};

/// Makes the class known to interface files; the window controllers do so themselves.
KELO_EXPORT void registerTreatmentView();

} // namespace kelo
