#include "lists/ListModel.h"

#include "support/ModelMirror.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <random>

namespace corvane {

namespace {

struct Fruit {
    QString id;
    int price = 0;

    bool operator==(const Fruit &) const = default;
};

class FruitList : public ListModel<Fruit> {
  public:
    enum TestRole { IdRole = Qt::UserRole, PriceRole };

    FruitList() : ListModel({{IdRole, "id", &Fruit::id}, {PriceRole, "price", &Fruit::price}}) {}

    using ListModel::notifyRow;
};

class NumberList : public KeyListModel {
  public:
    NumberList() : KeyListModel({}) {}
};

QList<Fruit> fruits(const char *ids, int price = 1) {
    QList<Fruit> rows;
    for (const char id : std::string_view(ids)) {
        rows.append({QString(QLatin1Char(id)), price});
    }
    return rows;
}

struct View : test::ModelMirror<Fruit> {
    explicit View(const FruitList &list)
        : ModelMirror(list, [&list](int row) -> Fruit {
              const QModelIndex index = list.index(row);
              return {index.data(FruitList::IdRole).toString(),
                      index.data(FruitList::PriceRole).toInt()};
          }) {}
};

} // namespace

TEST(ListModel, ReportsEveryChangeOfRandomListsToViews) {
    std::mt19937 random(1);
    for (int list = 0; list < 200; ++list) {
        FruitList model;
        const QAbstractItemModelTester tester(&model);
        const View view(model);
        QList<Fruit> rows = fruits("abcdefgh");
        for (int step = 0; step < 12; ++step) {
            switch (random() % 4) {
            case 0:
                std::ranges::shuffle(rows, random);
                break;
            case 1:
                rows.remove(0, qsizetype(random() % size_t(rows.size() + 1)));
                break;
            case 2:
                rows.append(Fruit{QString::number(random() % 20), 1}); // maybe a repeated key
                break;
            default:
                for (Fruit &fruit : rows) {
                    fruit.price += int(random() % 2);
                }
            }
            QHash<QString, QPersistentModelIndex> known;
            for (int row = 0; row < model.count(); ++row) {
                known.insert(model.row(row).id, model.index(row));
            }
            model.setRows(rows);
            ASSERT_EQ(view.rows, rows) << "list " << list << " step " << step;
            ASSERT_EQ(model.rows(), rows);
            for (auto row = known.cbegin(); row != known.cend(); ++row) {
                ASSERT_TRUE(!row->isValid() || row->data(FruitList::IdRole) == row.key());
            }
        }
    }
}

TEST(ListModel, KeepsTheIdentityOfARowWhoseKeyStays) {
    FruitList model;
    model.setRows(fruits("abcde"));
    const QPersistentModelIndex staying = model.index(3);
    const QPersistentModelIndex leaving = model.index(1);
    model.setRows(fruits("edxa", 2));
    EXPECT_EQ(staying.row(), 1);
    EXPECT_EQ(staying.data(FruitList::PriceRole), 2);
    EXPECT_FALSE(leaving.isValid());
    EXPECT_EQ(model.rowOf(QStringLiteral("d")), 1);
    EXPECT_EQ(model.rowOf(QStringLiteral("b")), -1);
}

TEST(ListModel, ReportsChangedValuesOnlyForRowsThatDiffer) {
    FruitList model;
    model.setRows(fruits("abcdef"));
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy counts(&model, &FruitList::countChanged);
    QList<Fruit> rows = fruits("abcdef");
    rows[1].price = rows[2].price = rows[5].price = 7;
    model.setRows(rows);
    model.setRows(rows);
    ASSERT_EQ(changes.count(), 2) << "one for adjacent rows";
    EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 1);
    EXPECT_EQ(changes.at(0).at(1).toModelIndex().row(), 2);
    EXPECT_EQ(changes.at(1).at(0).toModelIndex().row(), 5);
    model.setRow(3, {QStringLiteral("d"), 9});
    model.setRow(3, {QStringLiteral("d"), 9});
    model.setRow(6, {});
    EXPECT_EQ(changes.count(), 3);
    model.notifyRow(QStringLiteral("d"), {FruitList::PriceRole});
    EXPECT_EQ(changes.last().at(2).value<QList<int>>(), QList<int>{FruitList::PriceRole});
    EXPECT_EQ(counts.count(), 0);
    model.setRows({});
    EXPECT_EQ(counts.count(), 1);
}

TEST(ListModel, ReportsAdjacentRowsThatMoveAsOneMove) {
    FruitList model;
    model.setRows(fruits("abcdefg"));
    const View view(model);
    model.setRows(fruits("aefbcdg"));
    model.setRows(fruits("abcdefg"));
    EXPECT_EQ(view.moves, 2);
    EXPECT_EQ(view.rows, model.rows());
    model.setRows(fruits("gfedcba"));
    EXPECT_EQ(view.moves, 2) << "a layout change";
    EXPECT_EQ(view.rows, model.rows());
}

TEST(ListModel, LimitsTheNumberOfReportedChanges) {
    QList<quint32> all(2000);
    std::ranges::generate(all, [next = 0U]() mutable { return next++; });
    QList<quint32> even;
    std::ranges::copy_if(all, std::back_inserter(even), [](quint32 row) { return row % 2 == 0; });
    NumberList model;
    model.setRows(even);
    QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
    model.setRows(all);
    EXPECT_LE(size_t(insertions.count()), rowDiff::kMaxHunks);
    EXPECT_EQ(model.rows(), all);
}

} // namespace corvane
