#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/text/ToothNotation.h"

#include <QPointer>

#include <memory>
#include <string>

namespace viewer {

class ToothChart;

/// The option panel with the tooth chart of a document.
class ToothChartPanel : public kelo::OptionPanelController
{
    Q_OBJECT

public:
    static constexpr const char *name = "ToothChart"; ///< of the interface file

    ToothChartPanel(const std::string &windowNibName,
                    std::shared_ptr<kelo::DXDocumentModel> document);

    void awakeFromNib() override;
    void setNotation(ToothNotation notation);
    void setMayEdit(bool mayEdit);

private:
    std::shared_ptr<kelo::DXDocumentModel> model_;
    QPointer<ToothChart> chart_;
};

} // namespace viewer
