# The headers that an installation has: keloOpenGL/keloOpenGL.h and what it brings, and no other (a
# house test compares). A header that is not named here is the library's own affair.
set(KELO_PUBLIC_HEADERS
    base/Assertion.h
    base/Export.h
    base/Rect.h
    document/DXDocumentModel.h
    document/DXDocumentModelDelegate.h
    document/DocumentCatalogue.h
    document/DocumentMeshes.h
    document/ElasticModel.h
    document/ModelNotLoaded.h
    document/SavedState.h
    geometry/Extents.h
    geometry/Matrix.h
    geometry/Quaternion.h
    geometry/Vector.h
    keloModel/BracketColorType.h
    keloModel/Catalogue.h
    keloModel/ElasticsConfigType.h
    keloModel/ElasticsSizeType.h
    keloModel/NameKey.h
    keloModel/QKModel.h
    keloModel/QKType.h
    keloModel/QKTypeManager.h
    keloModel/SavedElastic.h
    keloModel/TreatmentNote.h
    keloOpenGL/bands/RubberBand.h
    keloOpenGL/bands/RubberBandTables.h
    keloOpenGL/editing/ActionType.h
    keloOpenGL/keloOpenGL.h
    keloOpenGL/menus/ToothNaming.h
    keloOpenGL/overlay/ToothLabels.h
    keloOpenGL/treatment/DXOpenGL.h
    keloOpenGL/treatment/DXOpenGLDelegate.h
    keloOpenGL/treatment/ScenePart.h
    keloOpenGL/view/HVFindGoodWindow.h
    keloOpenGL/view/HVOGLBasicView.h
    keloOpenGL/view/HVOGLMouseView.h
    keloOpenGL/view/HVOGLSmoothView.h
    keloOpenGL/view/MouthTransforms.h
    keloOpenGL/view/PackedData.h
    keloOpenGL/view/SimpleTexture.h
    keloOpenGL/view/StringTexture.h
    keloOpenGL/windows/DXDocument.h
    keloOpenGL/windows/OptionPanelController.h
    keloOpenGL/windows/SheetController.h
    keloOpenGL/windows/SolidWindowController.h
    keloOpenGL/windows/TreatmentView.h
    keloOpenGL/windows/WindowControllerWithDocumentController.h
    models/BakedLight.h
    models/BundleKey.h
    models/Color.h
    models/DXGLightweightModel.h
    models/HVOGLMaterial.h
    models/MeshFailure.h
    models/OBJReader.h
    models/PickIdentifier.h
    models/ToothModelLoader.h
    models/UserDefaultsColor.h
    platform/presenters/Alert.h
    platform/presenters/Menu.h
    platform/settings/ResourceBundle.h
    platform/settings/UserDefaults.h
    platform/settings/VersionChecker.h
    platform/time/NotificationCenter.h
    platform/time/NotificationQueue.h
    platform/time/QtRunLoop.h
    platform/time/RunLoop.h
    platform/time/VirtualRunLoop.h
    platform/view/Event.h
    platform/view/OpenGLContext.h
    platform/view/OpenGLView.h
    platform/widgets/Document.h
    platform/widgets/InterfaceFile.h
    platform/widgets/PropertyBinding.h
    platform/widgets/WidgetPresenters.h
    platform/widgets/WindowController.h
)

# Hosts include them under one name of ours, out of the way of headers of their own: models/Color.h of
# this tree is <keloOpenGL/models/Color.h>. The tree's folder keloOpenGL/ adds no second such level:
# keloOpenGL/view/PackedData.h has the same name in both.
# KELO_INSTALLED_HEADERS: what follows "keloOpenGL/" in these names, in the order of KELO_PUBLIC_HEADERS.
list(TRANSFORM KELO_PUBLIC_HEADERS REPLACE "^keloOpenGL/" "" OUTPUT_VARIABLE KELO_INSTALLED_HEADERS)
