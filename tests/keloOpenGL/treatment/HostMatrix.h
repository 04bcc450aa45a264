#pragma once

#include "document/DXDocumentModelDelegate.h"
#include "document/ElasticModel.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLDelegate.h"
#include "platform/presenters/Menu.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Everything that makes a document or a view tell its host, and everything that a host may do
// while it is told.
namespace kelo::test {

/// A host with one treatment in one view. It holds the only references, and counts the calls of
/// both delegates, in any of which it can be made to do something.
class MatrixHost
{
public:
    explicit MatrixHost(VirtualRunLoop &loop);
    ~MatrixHost();
    MatrixHost(const MatrixHost &) = delete;
    MatrixHost &operator=(const MatrixHost &) = delete;

    /// From now on the calls count; the one with this number (1 is the first; 0: every one) runs
    /// the reaction.
    void reactTo(int call, std::function<void(MatrixHost &)> reaction);

    std::shared_ptr<ElasticModel> place(const std::vector<std::string> &sequence) const;
    void clickAt(const Point &point, int clickCount = 1) const;
    Point placeOf(const std::string &toothKey) const;
    /// The row of a menu that pops up is chosen at once: the first with this action.
    void chooseRow(const std::string &selector);

    VirtualRunLoop &loop;
    std::shared_ptr<DXDocumentModel> document;
    std::shared_ptr<DXOpenGL> view;
    std::unique_ptr<DXDocumentModelDelegate> documentDelegate;
    std::unique_ptr<DXOpenGLDelegate> viewDelegate;
    std::shared_ptr<ElasticsConfigType> configuration;
    int calls = 0;

private:
    void wasTold();

    int reactingCall_ = -1;
    std::function<void(MatrixHost &)> reaction_;
    ContextMenuPresenter::Presenter keptPresenter_;
};

/// Something that the clinician or the host does to a view or a document.
struct MatrixOperation
{
    const char *name;
    /// Before the delegates are there.
    std::function<void(MatrixHost &)> prepare;
    std::function<void(MatrixHost &)> run;
};

/// Something that a host does in an operation of its delegate.
struct MatrixReaction
{
    const char *name;
    std::function<void(MatrixHost &)> run;
};

const std::vector<MatrixOperation> &matrixOperations();
const std::vector<MatrixReaction> &matrixReactions();

} // namespace kelo::test
