#pragma once

#include "base/Export.h"
#include "document/DXDocumentModelDelegate.h"
#include "document/ElasticModel.h"
#include "document/ModelNotLoaded.h"
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
#include <string>
#include <vector>

namespace kelo {

class DXGLightweightModel;
class Timer;

/// The name of the notification that a document posts, with itself as object, when it changed.
inline constexpr char documentModelChangedNotification[] = "documentModelChangedNotification";

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
    /// What setElasticModels takes.
    using ElasticModelElement = kelo::ElasticModelElement;

    DXDocumentModel();
    /// Cancels a pending notice: what the host did not flush or fetch is lost.
    ~DXDocumentModel();
    DXDocumentModel(const DXDocumentModel &) = delete;
    DXDocumentModel &operator=(const DXDocumentModel &) = delete;

    /// Not owned. Reset it before destroying the delegate. Null for none.
    DXDocumentModelDelegate *delegate() const;
    void setDelegate(DXDocumentModelDelegate *delegate);

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
    const std::shared_ptr<DXGLightweightModel> &upperGumModel() const;
    const std::shared_ptr<DXGLightweightModel> &lowerGumModel() const;
    const Models &toothModels() const;
    const Models &bracketModels() const;
    const Models &buttonModels() const;
    void setUpperGumModel(std::shared_ptr<DXGLightweightModel> model);
    void setLowerGumModel(std::shared_ptr<DXGLightweightModel> model);
    void setToothModels(Models models);
    void setBracketModels(Models models);
    /// Gives every button the extended hit box, so that the small buttons are easy to pick.
    void setButtonModels(Models models);

    const BracketColorTypes &availableBracketColorTypes() const;
    const ElasticsSizeTypes &availableElasticsSizeTypes() const;
    const ElasticsConfigTypes &availableElasticsConfigTypes() const;
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
    const ColorTypeIDs &bracketColorsTypeIDs() const;
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
    double updateAccumulationTime() const;
    void setUpdateAccumulationTime(double seconds);
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
    const ColorTypeIDs &pendingBracketColorTypeIDUpdates() const;
    const Visibilities &pendingBracketVisibilityUpdates() const;
    const Visibilities &pendingButtonVisibilityUpdates() const;
    /// @}

    /// Tells whoever observes this document that it changed, the views that show it among them.
    /// The operations do so themselves.
    void postDocumentModelChangedNotification() const;

    /// @name Elastics
    /// @{
    /// The placed elastics in placing order: the list itself, not a copy. Nobody notices a change
    /// that is made to it, or to an elastic in it, until postDocumentModelChangedNotification.
    ElasticModels &elasticModels();
    const ElasticModels &elasticModels() const;
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
    struct Parts;   ///< see DXDocumentModelParts.h
    struct Toggled; ///< likewise
    void toggleVisibility(const Toggled &toggled, std::string key);
    void toggleToothAndHooks(std::string toothKey, std::string buttonKey);
    void showWithTooth(const std::string &bracketKey);
    void setColor(std::string bracketKey, std::optional<long> typeID);
    void setElasticModelElements(const std::vector<ElasticModelElement> &elements);
    void refactorElasticModelsAround(const std::vector<std::string> &keys);
    void removeFromElastics(std::string key);

    void forgetJawModels();
    void meshChanged(const void *mesh);
    /// What every change of the document goes through: makes it, then announces it. Of changes
    /// within a change the outermost is announced, when all of it is made.
    template<class Action>
    auto change(Action &&action);
    /// Calls an operation of the delegate, if there is one. The operations that do so keep the
    /// document alive to their end, so that they need not ask afterwards whether it is.
    template<class Told, class... Arguments>
    void tell(Told DXDocumentModelDelegate::*told, Arguments &&...arguments);

    std::unique_ptr<Parts> parts_;
};

} // namespace kelo
