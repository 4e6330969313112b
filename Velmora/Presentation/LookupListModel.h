// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <memory>
#include <vector>

#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// The words of a selection, one row each, in order; the role `result` is a `LookupItem`. Rows are
/// converted as they come into sight, so that a selection may hold any number of words.
class LookupListModel : public QAbstractListModel {
    Q_OBJECT

  public:
    explicit LookupListModel(const std::vector<LookupResult>& results, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    std::shared_ptr<const std::vector<LookupResult>> results_;
};

}  // namespace velmora
