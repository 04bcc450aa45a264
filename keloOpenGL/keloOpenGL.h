#pragma once

/// All that a host needs: include this one header, link keloOpenGL::keloOpenGL.
///
/// The order below is that of the rooms, ground floor first. A host that wants shorter compile
/// times includes the headers that it uses instead, under the same names.

#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "geometry/Quaternion.h"
#include "geometry/Vector.h"

#include "platform/Alert.h"
#include "platform/Assertion.h"
#include "platform/Event.h"
#include "platform/Menu.h"
#include "platform/NotificationCenter.h"
#include "platform/NotificationQueue.h"
#include "platform/OpenGLContext.h"
#include "platform/OpenGLView.h"
#include "platform/QtRunLoop.h"
#include "platform/Rect.h"
#include "platform/ResourceBundle.h"
#include "platform/RunLoop.h"
#include "platform/UserDefaults.h"
#include "platform/VersionChecker.h"
#include "platform/VirtualRunLoop.h"

#include "keloModel/BracketColorType.h"
#include "keloModel/Catalogue.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloModel/JSONProblems.h"
#include "keloModel/QKModel.h"
#include "keloModel/QKType.h"
#include "keloModel/QKTypeManager.h"
#include "keloModel/TreatmentNote.h"

#include "models/BundleKey.h"
#include "models/Color.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "models/NameKey.h"
#include "models/OBJReader.h"
#include "models/ToothModelLoader.h"

#include "document/DXDocumentModel.h"
#include "document/DXDocumentModelDelegate.h"
#include "document/ElasticModel.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/ScenePart.h"
#include "keloOpenGL/view/HVFindGoodWindow.h"
#include "keloOpenGL/view/HVOGLBasicView.h"
#include "keloOpenGL/view/HVOGLMouseView.h"
#include "keloOpenGL/view/HVOGLSmoothView.h"
#include "keloOpenGL/view/PackedData.h"
#include "keloOpenGL/windows/DXDocument.h"
#include "keloOpenGL/windows/OptionPanelController.h"
#include "keloOpenGL/windows/SheetController.h"
#include "keloOpenGL/windows/SolidWindowController.h"
#include "keloOpenGL/windows/TreatmentView.h"
#include "keloOpenGL/windows/WindowControllerWithDocumentController.h"
