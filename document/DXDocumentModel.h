#pragma once

#include "base/Export.h"
#include "document/DXDocumentModelDelegate.h"
#include "document/ElasticModel.h"
#include "keloModel/BracketColorType.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloModel/NameKey.h"
#include "models/MeshFailure.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace kelo {

class DXGLightweightModel;
class Timer;
struct Teller;
class TreatmentNoteKeys;

/// The name of the notification that a document posts, with itself as object, when it changed.
inline constexpr char documentModelChangedNotification[] = "documentModelChangedNotification";

/// Thrown by the lists of models when one that they name is not loaded; the text says which.
class KELO_EXPORT ModelNotLoaded : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The dictionary form of an elastic; every entry may be absent.
struct ElasticModelDictionary
{
    std::shared_ptr<ElasticsConfigType> elasticsConfigType;
    std::shared_ptr<ElasticsSizeType> elasticsSizeType;
    std::optional<std::vector<std::string>> bracketSequence;
};

/// The state of one treatment: which meshes exist and are shown, the colour of every bracket, the
/// catalogues, and the placed elastics. The view reads it to draw and changes it through its
/// operations; the host loads it and is told of changes through the delegate.
///
/// Visibility lives in the meshes' hidden flags. A tooth is hidden by hiddenPrimary; a bracket or a
/// button by hiddenPrimary when it is not placed, and by hiddenSecondary when its tooth is hidden.
///
/// Every operation that changes a visibility, a colour or an elastic, for the user or to restore
/// saved state, posts documentModelChangedNotification through the default notification centre:
/// once, when the change is made and before the delegate is told. So does a change of one of its
/// meshes that somebody else makes. The setters of models and catalogues announce nothing.
///
/// Hold it in a shared_ptr: then it stays alive while one of its operations runs, whatever the
/// delegate releases. Timers are the main run loop's. Main thread only.
class KELO_EXPORT DXDocumentModel : public std::enable_shared_from_this<DXDocumentModel>
{
public:
    using Models = NameKeyDictionary<std::shared_ptr<DXGLightweightModel>>;
    using ModelList = std::vector<std::shared_ptr<DXGLightweightModel>>;
    using Paths = NameKeyDictionary<std::string>;
    using Visibilities = NameKeyDictionary<bool>;
    using ColorTypeIDs = NameKeyDictionary<long>;
    /// With `nullopt` for a bracket that has no colour.
    using OptionalColorTypeIDs = NameKeyDictionary<std::optional<long>>;
    using BracketColorTypes = std::map<long, std::shared_ptr<BracketColorType>>;
    using ElasticsSizeTypes = std::map<long, std::shared_ptr<ElasticsSizeType>>;
    using ElasticsConfigTypes = std::vector<std::shared_ptr<ElasticsConfigType>>;
    using ElasticModels = std::vector<std::shared_ptr<ElasticModel>>;
    /// What setElasticModels takes: an elastic, the dictionary form of one, or something else (a
    /// text, nothing), which is dropped.
    using ElasticModelElement = std::variant<std::monostate, std::shared_ptr<ElasticModel>,
                                             ElasticModelDictionary, std::string>;

    DXDocumentModel();
    /// Cancels a pending notice: what the host did not flush or fetch is lost.
    ~DXDocumentModel();
    DXDocumentModel(const DXDocumentModel &) = delete;
    DXDocumentModel &operator=(const DXDocumentModel &) = delete;

    /// Not owned. Reset it before destroying the delegate. Null for none.
    DXDocumentModelDelegate *delegate() const { return delegate_; }
    void setDelegate(DXDocumentModelDelegate *delegate) { delegate_ = delegate; }

    /// @name Loading, called by the host
    /// See ToothModelLoader for the files, their messages and errors. Each returns what could not
    /// be loaded, and why; the rest is loaded, and drawn.
    /// @{
    MeshFailures loadUpperAndLowerGumModels();
    MeshFailures loadToothModelFilesForToothNameKeys(const std::vector<std::string> &keys);
    MeshFailures loadToothModelFiles(const Paths &files);
    /// Brackets exist for the keys "2" to "15" and "18" to "31" only: elastics have hooks for
    /// these.
    MeshFailures loadBracketModelFilesForToothNameKeys(const std::vector<std::string> &keys);
    MeshFailures loadBracketModelFiles(const Paths &files);
    MeshFailures loadButtonModelFilesForButtonNameKeys(const std::vector<std::string> &keys);
    MeshFailures loadButtonModelFiles(const Paths &files);
    /// Called after every file while teeth, brackets or buttons are loaded, with how many files of
    /// the running call are done and how many it has. May be empty.
    std::function<void(std::size_t doneCount, std::size_t fileCount)> loadingProgress;
    /// @}

    /// @name Models and catalogues
    /// The setters announce nothing. A null value in a dictionary of models is an AssertionFailure.
    /// @{
    const std::shared_ptr<DXGLightweightModel> &upperGumModel() const { return _upperGumModel; }
    const std::shared_ptr<DXGLightweightModel> &lowerGumModel() const { return _lowerGumModel; }
    const Models &toothModels() const { return _toothModels; }
    const Models &bracketModels() const { return _bracketModels; }
    const Models &buttonModels() const { return _buttonModels; }
    void setUpperGumModel(std::shared_ptr<DXGLightweightModel> model);
    void setLowerGumModel(std::shared_ptr<DXGLightweightModel> model);
    void setToothModels(Models models);
    void setBracketModels(Models models);
    /// Gives every button the extended hit box, so that the small buttons are easy to pick.
    void setButtonModels(Models models);

    const BracketColorTypes &availableBracketColorTypes() const
    {
        return _availableBracketColorTypes;
    }
    const ElasticsSizeTypes &availableElasticsSizeTypes() const
    {
        return _availableElasticsSizeTypes;
    }
    const ElasticsConfigTypes &availableElasticsConfigTypes() const
    {
        return _availableElasticsConfigTypes;
    }
    void setAvailableBracketColorTypes(BracketColorTypes types);
    void setAvailableElasticsSizeTypes(ElasticsSizeTypes types);
    void setAvailableElasticsConfigTypes(ElasticsConfigTypes types);

    /// All teeth, brackets and buttons, each in the order of their keys, then the upper and the
    /// lower gum; hidden ones included. Throws ModelNotLoaded when a gum is not loaded.
    ModelList models() const;
    /// The gum of the jaw, then for each of its teeth (TreatmentNote) the tooth, its bracket and
    /// its lingual button; hidden ones included. Throws ModelNotLoaded when one of them is not
    /// loaded.
    ModelList upperModels() const;
    ModelList lowerModels() const;
    /// The same three lists, in the same order, without what is not loaded. Views draw and pick
    /// these: a tooth whose set is not loaded is like one that the patient does not have.
    ModelList loadedModels() const;
    ModelList loadedUpperModels() const;
    ModelList loadedLowerModels() const;
    /// @}

    /// @name Visibilities
    /// The dictionaries reflect hiddenPrimary alone: a placed bracket on a hidden tooth is
    /// "visible". The setters are for restoring saved state: keys that are not in the given
    /// dictionary stay as they are, keys without a model are skipped, the delegate is not told, no
    /// update is accumulated and no elastic changes.
    /// @{
    Visibilities toothVisibilities() const;
    Visibilities bracketVisibilities() const;
    Visibilities buttonVisibilities() const;
    /// Sets hiddenSecondary of the tooth's bracket and button as well.
    void setToothVisibilities(const Visibilities &visibilities);
    void setBracketVisibilities(const Visibilities &visibilities);
    void setButtonVisibilities(const Visibilities &visibilities);

    /// The toggles flip what the user sees, tell the delegate at once, and shorten or remove the
    /// elastics that ran through what was hidden; those of brackets and buttons accumulate an
    /// update too. A key without a model changes no model, but the update is accumulated and the
    /// delegate told that it is visible.
    void toggleVisibilityOfBracket(const std::string &key);
    void toggleVisibilityOfButton(const std::string &key);
    void toggleVisibilityOfTooth(const std::string &key);
    /// @}

    /// @name Bracket colours
    /// @{
    /// The colour type of each coloured bracket; a bracket without an entry is white. (The name has
    /// one s more than its setter's.)
    const ColorTypeIDs &bracketColorsTypeIDs() const { return _bracketColorTypeIDs; }
    /// Replaces all colours, to restore saved state: paints each bracket of the dictionary in its
    /// type's colour, or white where there is `nullopt`. A type that is not available, or has no
    /// colour, is reported on standard error and leaves its bracket as it was, without an entry:
    ///     Error: Specified color "ID" for bracket KEY is not in the list of available colors (IDs)
    /// No update is accumulated, and the delegate is not told.
    void setBracketColorTypeIDs(const OptionalColorTypeIDs &typeIDs);
    /// The same from what bracketColorsTypeIDs returned. (A template, so that a braced list always
    /// means the dictionary above.)
    template<std::same_as<ColorTypeIDs> TypeIDs>
    void setBracketColorTypeIDs(const TypeIDs &typeIDs)
    {
        setBracketColorTypeIDs(OptionalColorTypeIDs(typeIDs.begin(), typeIDs.end()));
    }
    /// Changes one colour as the user does: stores it, paints the bracket, accumulates an update.
    /// `nullopt` removes the colour: the bracket is white and the update says 4999. A type that is
    /// not available is stored unchanged and painted as a material of no colour.
    void bracket_setColorWithBracketColorTypeID(const std::string &key,
                                                const std::optional<long> &typeID);
    /// Shows the bracket, and then its tooth, if they are hidden; then sets the colour.
    void bracket_makeVisibleAndSetColorWithBracketColorTypeID(const std::string &key,
                                                              const std::optional<long> &typeID);
    /// @}

    /// @name Updates for the host
    /// Changes are gathered, the latest of each key, and the delegate is told once they have rested
    /// for updateAccumulationTime.
    /// @{
    /// Seconds; 3 at first. Counts from the next change on.
    double updateAccumulationTime() const { return updateAccumulationTime_; }
    void setUpdateAccumulationTime(double seconds) { updateAccumulationTime_ = seconds; }
    /// `nullopt` is recorded as 4999.
    void accumulateUpdateForBracket_withBracketColorTypeID(const std::string &key,
                                                           const std::optional<long> &typeID);
    void accumulateUpdateForBracket_visibility(const std::string &key, bool visible);
    void accumulateUpdateForButton_visibility(const std::string &key, bool visible);
    /// What the timer calls: offers what is pending to the delegate.
    void updateAccumulationTimer(Timer &timer);
    /// Fires the pending timer now, for a host that does not want to wait; without one it does
    /// nothing.
    void flushOutstandingUpdates();

    /// Each returns what is pending and clears it.
    ColorTypeIDs bracketColorTypeIDUpdates();
    Visibilities bracketVisibilityUpdates();
    Visibilities buttonVisibilityUpdates();
    /// What is pending, without clearing it.
    const ColorTypeIDs &pendingBracketColorTypeIDUpdates() const
    {
        return bracketColorTypeIDUpdates_;
    }
    const Visibilities &pendingBracketVisibilityUpdates() const
    {
        return bracketVisibilityUpdates_;
    }
    const Visibilities &pendingButtonVisibilityUpdates() const { return buttonVisibilityUpdates_; }
    /// @}

    /// Tells whoever observes this document that it changed, the views that show it among them.
    /// The operations do so themselves.
    void postDocumentModelChangedNotification() const;

    /// @name Elastics
    /// @{
    /// The placed elastics in placing order: the list itself, not a copy. Nobody notices a change
    /// that is made to it, or to an elastic in it, until postDocumentModelChangedNotification.
    ElasticModels &elasticModels() { return _elasticModels; }
    const ElasticModels &elasticModels() const { return _elasticModels; }
    /// Replaces the list: elastics as they are, dictionaries made into elastics, anything else
    /// dropped. The delegate is not told.
    void setElasticModels(const ElasticModels &elastics);
    /// The same from a std::vector<ElasticModelElement>. (A template, so that a braced list always
    /// means a list of elastics.)
    template<std::same_as<std::vector<ElasticModelElement>> Elements>
    void setElasticModels(const Elements &elements)
    {
        setElasticModelElements(elements);
    }
    /// Appends the elastic, also when it is placed already. Null is ignored.
    void placeElasticModel(const std::shared_ptr<ElasticModel> &elastic);
    /// Removes every occurrence; does nothing when it is not placed.
    void removeElasticModel(const std::shared_ptr<ElasticModel> &elastic);
    /// Does nothing when the elastic is not placed.
    void elasticModel_setElasticsSizeType(const std::shared_ptr<ElasticModel> &elastic,
                                          const std::shared_ptr<ElasticsSizeType> &sizeType);
    /// Gives it another named configuration, or with null none. The delegate is not told, because
    /// it is the host that names elastics. Does nothing when the elastic is not placed.
    void elasticModel_setElasticsConfigType(const std::shared_ptr<ElasticModel> &elastic,
                                            const std::shared_ptr<ElasticsConfigType> &configType);
    /// The first placed elastic with this identifier, or null.
    std::shared_ptr<ElasticModel> elasticModelForUniqueID(std::uint32_t uniqueID) const;
    /// Removes the key from every elastic if what it names is hidden. An elastic that is left on a
    /// single tooth (a bracket and the button on one tooth count once) is removed. The delegate is
    /// told once, if any elastic changed.
    void refactorElasticModels(const std::string &key);
    /// @}

    /// What is wrong with the state, one sentence each; empty when all holds that always should:
    /// hidden flags of brackets and buttons agree with their teeth, identifiers of models are
    /// distinct and can be picked, buttons have extended hit boxes, colours belong to brackets and
    /// are available or 4999, elastics run through loaded brackets and buttons, and no two elastics
    /// share an identifier.
    std::vector<std::string> checkSanity() const;

private:
    enum class Jaw { Upper, Lower };
    /// What is loaded of a jaw, as it was listed last: views need it for every frame and pick.
    struct JawModels
    {
        std::shared_ptr<const TreatmentNoteKeys> noteKeys; ///< null while nothing is listed
        ModelList models;
        bool isComplete = false;
    };
    struct JawKeys;
    static JawKeys keysOfJaw(Jaw jaw);
    const JawModels &loadedJaw(Jaw jaw) const;
    void refuseIncompleteJaw(Jaw jaw) const;
    void forgetJawModels();
    bool owns(const void *mesh) const;
    void meshChanged(const void *mesh);

    class ChangeScope
    {
    public:
        explicit ChangeScope(int &depth) : depth_(depth) { ++depth_; }
        ~ChangeScope() { --depth_; }
        ChangeScope(const ChangeScope &) = delete;
        ChangeScope &operator=(const ChangeScope &) = delete;

    private:
        int &depth_;
    };
    /// What every change of the document goes through: makes it, then announces it. Of changes
    /// within a change the outermost is announced, when all of it is made.
    template<class Action>
    void change(Action &&action)
    {
        {
            const ChangeScope scope(changeDepth_);
            action();
        }
        if (changeDepth_ == 0) postDocumentModelChangedNotification();
    }

    void setElasticModelElements(const std::vector<ElasticModelElement> &elements);
    void restartUpdateAccumulationTimer();
    bool isHiddenUnderKey(const std::string &key) const;
    bool isPlaced(const std::shared_ptr<ElasticModel> &elastic) const;
    Teller teller() const;

    DXDocumentModelDelegate *delegate_ = nullptr;
    std::shared_ptr<DXGLightweightModel> _upperGumModel;
    std::shared_ptr<DXGLightweightModel> _lowerGumModel;
    Models _toothModels;
    Models _bracketModels;
    Models _buttonModels;
    BracketColorTypes _availableBracketColorTypes;
    ElasticsSizeTypes _availableElasticsSizeTypes;
    ElasticsConfigTypes _availableElasticsConfigTypes;
    ColorTypeIDs _bracketColorTypeIDs;
    ElasticModels _elasticModels;
    mutable JawModels upperJaw_;
    mutable JawModels lowerJaw_;
    int changeDepth_ = 0;
    /// The fields below share their names with operations, hence the trailing underscore.
    std::weak_ptr<Timer> updateAccumulationTimer_; ///< the run loop holds it
    double updateAccumulationTime_ = 3.0;
    ColorTypeIDs bracketColorTypeIDUpdates_;
    Visibilities bracketVisibilityUpdates_;
    Visibilities buttonVisibilityUpdates_;
};

} // namespace kelo
