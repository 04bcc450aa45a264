#include "viewer/windows/ToothChartPanel.h"

#include "viewer/windows/ToothChart.h"

#include <utility>

namespace viewer {

ToothChartPanel::ToothChartPanel(const std::string &windowNibName,
                                 std::shared_ptr<kelo::DXDocumentModel> document)
    : OptionPanelController(windowNibName), model_(std::move(document))
{}

void ToothChartPanel::awakeFromNib()
{
    OptionPanelController::awakeFromNib();
    chart_ = window()->findChild<ToothChart *>(QStringLiteral("chart"));
    kelo::assertThat(chart_, "The interface file ToothChart lacks its chart");
    chart_->setDocument(model_);
}

void ToothChartPanel::setNotation(ToothNotation notation)
{
    if (chart_) chart_->setNotation(notation);
}

void ToothChartPanel::setMayEdit(bool mayEdit)
{
    if (chart_) chart_->setMayEdit(mayEdit);
}

} // namespace viewer
