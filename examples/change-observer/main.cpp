// Prints every change of a treatment, while somebody makes changes in the window: with the elastics
// tool a click on a bracket begins an elastic, with the bracket tool a click on a tooth opens its
// menu. With --demonstrate it makes some changes itself, without a window, and ends.
#include <keloOpenGL/keloOpenGL.h>

#include <QApplication>
#include <QFile>
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

void loadSamplePatient(Document &document)
{
    using Note = kelo::TreatmentNote;
    auto teeth = Note::upperToothNameKeys();
    for (const std::string &key : Note::lowerToothNameKeys())
        teeth.push_back(key);
    std::vector<std::string> buttons;
    for (const std::string &key : teeth)
        buttons.push_back(Note::buttonNameForToothName(key));
    document.loadUpperAndLowerGumModels();
    document.loadToothModelFilesForToothNameKeys(teeth);
    document.loadBracketModelFilesForToothNameKeys(teeth);
    document.loadButtonModelFilesForButtonNameKeys(buttons);
}

// [catalogue]
/// Offers the colours, sizes and named elastics of the library's catalogue.
void setCatalogue(Document &document)
{
    const auto bundle = kelo::ResourceBundle::bundleWithIdentifier(kelo::keloOpenGLBundleKey);
    QFile file(QString::fromStdString(bundle->bundlePath() + "/catalogue.json"));
    file.open(QIODevice::ReadOnly);
    const auto catalogue = kelo::catalogueFromJSON(file.readAll()).catalogue.value();
    Document::BracketColorTypes colors;
    for (const auto &color : catalogue.bracketColorTypes)
        colors[color->typeID] = color;
    Document::ElasticsSizeTypes sizes;
    for (const auto &size : catalogue.elasticsSizeTypes)
        sizes[size->typeID] = size;
    document.setAvailableBracketColorTypes(colors);
    document.setAvailableElasticsSizeTypes(sizes);
    document.setAvailableElasticsConfigTypes(catalogue.elasticsConfigTypes);
    // Menus look records up by their identifiers.
    catalogue.fill(kelo::QKTypeManager::typeManager());
}
// [catalogue]

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
    loadSamplePatient(*document);
    setCatalogue(*document);
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
