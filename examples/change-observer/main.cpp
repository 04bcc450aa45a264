// Prints every change of a treatment, while somebody makes changes in the window: with the elastics
// tool a click on a bracket begins an elastic, with the bracket tool a click on a tooth opens its
// menu. With --demonstrate it makes some changes itself, without a window, and ends.
#include <keloOpenGL/keloOpenGL.h>

#include <QApplication>
#include <QMainWindow>

#include <iostream>

using Document = kelo::DXDocumentModel;
using Elastic = std::shared_ptr<kelo::ElasticModel>;

namespace {

std::string list(const std::vector<std::string> &keys)
{
    std::string text;
    for (const std::string &key : keys)
        text += (text.empty() ? "" : ",") + key;
    return text;
}

void print(const std::string &line)
{
    std::cout << line << std::endl;
}

void printBracketUpdates(Document &document)
{
    // Asking for the updates takes them: what is not asked for is offered again.
    for (const auto &[key, typeID] : document.bracketColorTypeIDUpdates())
        print("to store: bracket " + key + " has the colour " + std::to_string(typeID));
    for (const auto &[key, visible] : document.bracketVisibilityUpdates())
        print("to store: bracket " + key + (visible ? " is placed" : " is not placed"));
}

void printButtonUpdates(Document &document)
{
    for (const auto &[key, visible] : document.buttonVisibilityUpdates())
        print("to store: button " + key + (visible ? " is placed" : " is not placed"));
}

// [observer]
/// A delegate that has every operation. What a host has no use for it leaves empty.
kelo::DXDocumentModelDelegate observer()
{
    kelo::DXDocumentModelDelegate delegate;
    // Told at once:
    delegate.tooth_visibilityDidChange = [](const std::string &key, bool visible) {
        print("tooth " + key + (visible ? " shown" : " hidden"));
    };
    delegate.bracket_visibilityDidChange = [](const std::string &key, bool visible) {
        print("bracket " + key + (visible ? " placed" : " removed"));
    };
    delegate.button_visibilityDidChange = [](const std::string &key, bool visible) {
        print("button " + key + (visible ? " placed" : " removed"));
    };
    delegate.elasticModelPlaced = [](const Elastic &elastic) {
        print("elastic placed over " + list(elastic->bracketSequence()));
    };
    delegate.elasticModelRemoved = [](const Elastic &elastic) {
        print("elastic removed from " + list(elastic->bracketSequence()));
    };
    delegate.elasticModelColorDidChange = [](const Elastic &elastic) {
        print("elastic over " + list(elastic->bracketSequence()) + " is now " +
              elastic->elasticsSizeType()->typeLabel);
    };
    delegate.elasticModelsRefactoredAroundBrackets = [](const std::vector<std::string> &keys) {
        print("elastics shortened around " + list(keys));
    };
    // Told once the changes have rested for updateAccumulationTime, 3 seconds at first:
    delegate.bracketUpdatesAvailable = printBracketUpdates;
    delegate.buttonUpdatesAvailable = printButtonUpdates;
    return delegate;
}
// [observer]

// [treatment]
/// A patient's meshes, the clinic's catalogue, and the treatment as it was stored.
void openTreatment(Document &document, const std::string &meshFolder,
                   const kelo::Catalogue &catalogue, const kelo::SavedState &state)
{
    for (const kelo::MeshFailure &failure : kelo::loadMeshFolder(document, meshFolder))
        print(failure.sentence());
    kelo::setCatalogue(document, catalogue);
    for (const kelo::ElasticProblem &problem : kelo::restoreState(document, state))
        print(problem.sentence(state));
}
// [treatment]

/// A treatment of the sample patient, as a host would read it from its own store.
kelo::SavedState storedState()
{
    kelo::SavedState state;
    for (const auto &keys :
         {kelo::TreatmentNote::upperToothNameKeys(), kelo::TreatmentNote::lowerToothNameKeys()}) {
        for (const std::string &key : keys) {
            state.bracketVisibilities[key] = true;
            state.buttonVisibilities[kelo::TreatmentNote::buttonNameForToothName(key)] = true;
        }
    }
    return state;
}

/// Some changes of every kind, made as the view makes them.
void demonstrate(Document &document)
{
    const auto &sizes = document.availableElasticsSizeTypes();
    const auto elastic = std::make_shared<kelo::ElasticModel>(
        nullptr, sizes.at(1), std::vector<std::string>{"6", "27", "28"});
    document.placeElasticModel(elastic);
    document.elasticModel_setElasticsSizeType(elastic, sizes.at(2));
    document.bracket_setColorWithBracketColorTypeID("8", 1);
    document.toggleVisibilityOfBracket("27");
    document.toggleVisibilityOfButton("3l");
    document.toggleVisibilityOfTooth("18");
    document.removeElasticModel(elastic);
    // Otherwise the notices come after three seconds without a change.
    document.flushOutstandingUpdates();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    auto document = std::make_shared<Document>();
    // The library's resources are a folder of meshes too.
    const auto bundle = kelo::ResourceBundle::bundleWithIdentifier(kelo::keloOpenGLBundleKey);
    openTreatment(*document, bundle->bundlePath(), kelo::standardCatalogue().catalogue.value(),
                  storedState());
    auto delegate = observer();
    document->setDelegate(&delegate);

    if (application.arguments().contains("--demonstrate")) {
        demonstrate(*document);
    } else {
        auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0, 0}, {1024, 768}});
        view->setDocumentModel(document);
        // The tools are there for a treatment of today that is not approved.
        const auto now = QDateTime::currentDateTime();
        view->setCurrentDate(now);
        view->setDisplayedDate(now);
        view->setRepeatActionTimerInterval(3.0);

        QMainWindow window;
        window.setCentralWidget(view->createContainer());
        window.resize(1024, 768);
        window.show();
        QApplication::exec();
        document->flushOutstandingUpdates();
    }
    // The document does not own its delegate.
    document->setDelegate(nullptr);
}
