#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemModel>

#include <algorithm>
#include <functional>

namespace corvane::test {

/// A view that knows only what the signals of a list model report. Fails the test if the model is
/// reset. The model must outlive it.
template <class Row> class ModelMirror {
  public:
    /// `read` returns a row of the model.
    ModelMirror(const QAbstractItemModel &model, std::function<Row(int)> read)
        : m_model(model), m_read(std::move(read)) {
        using Model = QAbstractItemModel;
        rows = shown();
        QObject::connect(&model, &Model::modelReset, [] { FAIL() << "the model was reset"; });
        QObject::connect(&model, &Model::rowsRemoved, [this](const auto &, int first, int last) {
            rows.remove(first, last - first + 1);
            EXPECT_EQ(rows.size(), m_model.rowCount());
        });
        QObject::connect(&model, &Model::rowsInserted, [this](const auto &, int first, int last) {
            for (int row = first; row <= last; ++row) {
                rows.insert(row, m_read(row));
            }
            EXPECT_EQ(rows.size(), m_model.rowCount());
        });
        QObject::connect(&model, &Model::rowsMoved,
                         [this](const auto &, int first, int last, const auto &, int before) {
                             const auto begin = rows.begin();
                             before > last
                                 ? std::rotate(begin + first, begin + last + 1, begin + before)
                                 : std::rotate(begin + before, begin + first, begin + last + 1);
                             ++moves;
                         });
        QObject::connect(&model, &Model::layoutChanged, [this] {
            EXPECT_TRUE(std::ranges::is_permutation(rows, shown()));
            rows = shown();
        });
        QObject::connect(&model, &Model::dataChanged, [this](const auto &first, const auto &last) {
            for (int row = first.row(); row <= last.row(); ++row) {
                rows[row] = m_read(row);
                changedRows.append(rows.at(row));
            }
        });
    }
    Q_DISABLE_COPY_MOVE(ModelMirror)

    /// The rows of the model itself.
    QList<Row> shown() const {
        QList<Row> all;
        for (int row = 0; row < m_model.rowCount(); ++row) {
            all.append(m_read(row));
        }
        return all;
    }

    QList<Row> rows;        ///< as reported
    QList<Row> changedRows; ///< reported as changed
    int moves = 0;

  private:
    const QAbstractItemModel &m_model;
    std::function<Row(int)> m_read;
};

} // namespace corvane::test
