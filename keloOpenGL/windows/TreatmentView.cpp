#include "keloOpenGL/windows/TreatmentView.h"

#include "platform/widgets/InterfaceFile.h"

#include <QVBoxLayout>

namespace kelo {
namespace {

/// Until the layout sets another.
constexpr Rect initialFrame{{0.0, 0.0}, {1024.0, 768.0}};

} // namespace

TreatmentView::TreatmentView(QWidget *parent)
    : QWidget(parent), view_(makeView<DXOpenGL>(initialFrame))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    QWidget *container = view_->createContainer(this);
    container->setAccessibleName(tr("Treatment view"));
    layout->addWidget(container);
}

TreatmentView::~TreatmentView() = default;

void TreatmentView::setDocumentModel(const std::shared_ptr<DXDocumentModel> &model)
{
    if (model == view_->documentModel()) return;
    view_->setDocumentModel(model);
    emit documentModelChanged();
}

void registerTreatmentView()
{
    registerInterfaceFileClass("kelo::TreatmentView",
                               [](QWidget *parent) { return new TreatmentView(parent); });
}

} // namespace kelo
