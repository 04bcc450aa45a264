#pragma once

#include "base/Export.h"

#include <memory>
#include <utility>
#include <vector>

namespace kelo {

class DXDocumentModel;
class DXGLightweightModel;
class HVOGLMaterial;

/// Paints every bracket of a document white for as long as it lives; afterwards each has the
/// material that it had. Nothing without a document.
class KELO_EXPORT WhiteBrackets
{
public:
    explicit WhiteBrackets(const DXDocumentModel *document);
    ~WhiteBrackets();
    WhiteBrackets(const WhiteBrackets &) = delete;
    WhiteBrackets &operator=(const WhiteBrackets &) = delete;

private:
    std::vector<std::pair<std::shared_ptr<DXGLightweightModel>, std::shared_ptr<HVOGLMaterial>>>
        kept_;
};

} // namespace kelo
