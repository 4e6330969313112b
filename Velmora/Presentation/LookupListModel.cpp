// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/LookupListModel.h"

#include "Velmora/Presentation/LookupItem.h"

namespace velmora {

namespace {

constexpr int resultRole = Qt::UserRole;

}  // namespace

LookupListModel::LookupListModel(const std::vector<LookupResult>& results, QObject* parent)
    : QAbstractListModel(parent),
      results_(std::make_shared<const std::vector<LookupResult>>(results)) {}

int LookupListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(results_->size());
}

QVariant LookupListModel::data(const QModelIndex& index, int role) const {
    if (role != resultRole || !index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const LookupResult& result = (*results_)[static_cast<std::size_t>(index.row())];
    return QVariant::fromValue(LookupItem(std::shared_ptr<const LookupResult>(results_, &result)));
}

QHash<int, QByteArray> LookupListModel::roleNames() const {
    return {{resultRole, "result"}};
}

}  // namespace velmora
