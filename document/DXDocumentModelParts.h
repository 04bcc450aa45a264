#pragma once

#include "base/TellDelegate.h"
#include "document/BracketPaint.h"
#include "document/ChangeNesting.h"
#include "document/DXDocumentModel.h"
#include "document/ElasticList.h"
#include "document/ModelLists.h"
#include "document/UpdateAccumulation.h"

#include <utility>

namespace kelo {

/// What a document is put together from. Only its own sources include this.
struct DXDocumentModel::Parts
{
    explicit Parts(std::function<void(Timer &)> rested) : updates(std::move(rested)) {}

    DXDocumentModelDelegate *delegate = nullptr;
    ModelSet models;
    JawList upperJaw{Jaw::Upper};
    JawList lowerJaw{Jaw::Lower};
    BracketPaint paint;
    ElasticsSizeTypes elasticsSizeTypes;
    ElasticsConfigTypes elasticsConfigTypes;
    ElasticList elastics;
    ChangeNesting changes;
    UpdateAccumulation updates;
};

/// What a toggle of brackets or of buttons is about.
struct DXDocumentModel::Toggled
{
    const Models &models;
    Visibilities &updates;
    std::function<void(const std::string &key, bool visible)> DXDocumentModelDelegate::*told;
};

template<class Action>
auto DXDocumentModel::change(Action &&action)
{
    return parts_->changes.run(action, [this] { postDocumentModelChangedNotification(); });
}

template<class Told, class... Arguments>
void DXDocumentModel::tell(Told DXDocumentModelDelegate::*told, Arguments &&...arguments)
{
    const Teller teller{weak_from_this(), weak_from_this()};
    tellDelegate(teller, parts_->delegate, told, std::forward<Arguments>(arguments)...);
}

} // namespace kelo
