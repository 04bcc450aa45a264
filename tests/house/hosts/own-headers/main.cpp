#include "geometry/Vector.h"
#include "models/Color.h"
#include "platform/view/Event.h"

#include <keloOpenGL/geometry/Vector.h>
#include <keloOpenGL/keloOpenGL.h>
#include <keloOpenGL/models/Color.h>
#include <keloOpenGL/platform/view/Event.h>
#include <keloOpenGL/treatment/DXOpenGL.h>

#include <iostream>

// The library's own headers are found under its name alone.
#if __has_include("models/OBJReader.h") || __has_include("document/ElasticModel.h")
#error "The library puts headers of other names on a host's include path"
#endif

/// Prints a colour, a vector and an event of its own beside those of the library.
int main()
{
    const Color ownColor{"ivory"};
    const kelo::Color color = kelo::Color::whiteColor();
    std::cout << "colours: " << ownColor.name << ", " << color.red << "\n";

    const Vector ownVector{2.5, 4};
    const kelo::Vector3 vector{3, 4, 12};
    std::cout << "vectors: " << sum(ownVector) << ", " << kelo::Vector3_magnitude(vector) << "\n";

    const Event ownEvent{"Monday"};
    kelo::Event event;
    event.clickCount = 2;
    std::cout << "events: " << ownEvent.day << ", " << event.clickCount << "\n";

    // Linked, not only compiled.
    const kelo::DXDocumentModel document;
    std::cout << "elastics: " << document.elasticModels().size() << "\n";
}
