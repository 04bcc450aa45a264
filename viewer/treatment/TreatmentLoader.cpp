#include "viewer/treatment/TreatmentLoader.h"

#include "keloOpenGL/keloOpenGL.h"

#include <QFile>

namespace viewer {

QStringList loadMeshes(kelo::DXDocumentModel &document, const QString &meshFolder,
                       const LoadingProgress &progress)
{
    const kelo::MeshFailures failures =
        meshFolder.isEmpty()
            ? kelo::loadSamplePatient(document, progress)
            : kelo::loadMeshFolder(document, QFile::encodeName(meshFolder).toStdString(), progress);
    QStringList sentences;
    for (const kelo::MeshFailure &failure : failures)
        sentences << QString::fromStdString(failure.sentence());
    return sentences;
}

std::shared_ptr<kelo::DXDocumentModel> samplePatientDocument()
{
    auto document = std::make_shared<kelo::DXDocumentModel>();
    loadMeshes(*document, QString());
    return document;
}

} // namespace viewer
