#include "keloOpenGL/treatment/MenuMethods.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

namespace kelo {

const std::map<std::string, MenuMethod> &menuMethods()
{
    static const std::map<std::string, MenuMethod> methods = {
        {"bracketColorMenuItemSelected:", &DXOpenGL::bracketColorMenuItemSelected},
        {"placeBracketSelected:", &DXOpenGL::placeBracketSelected},
        {"removeBracketSelected:", &DXOpenGL::removeBracketSelected},
        {"placeButtonSelected:", &DXOpenGL::placeButtonSelected},
        {"removeButtonSelected:", &DXOpenGL::removeButtonSelected},
        {"placeToothSelected:", &DXOpenGL::placeToothSelected},
        {"removeToothSelected:", &DXOpenGL::removeToothSelected},
        {"placeAllBracketsSelected:", &DXOpenGL::placeAllBracketsSelected},
        {"markAllBracketsSelected:", &DXOpenGL::markAllBracketsSelected},
        {"removeAllBracketsSelected:", &DXOpenGL::removeAllBracketsSelected},
        {"startElasticColorMenuItemSelected:", &DXOpenGL::startElasticColorMenuItemSelected},
        {"placeSelectedElasticsConfigType:", &DXOpenGL::placeSelectedElasticsConfigType},
        {"updateElasticColorMenuItemSelected:", &DXOpenGL::updateElasticColorMenuItemSelected},
        {"markAllElasticsSelected:", &DXOpenGL::markAllElasticsSelected},
        {"removeElasticSelected:", &DXOpenGL::removeElasticSelected},
        {"removeAllElasticsSelected:", &DXOpenGL::removeAllElasticsSelected},
        {"nameSelectedElasticsModel:", &DXOpenGL::nameSelectedElasticsModel},
        {"doNothing:", &DXOpenGL::doNothing},
    };
    return methods;
}

} // namespace kelo
