// States and arcs out of one block end one by one, whatever hosts do with them.
#include "tables/bulk_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "Egoera.h"
#include "Zubia.h"
#include "support.h"

namespace {

using lemara::Bulk;
using lemara::test::table_from;

/// What a host may derive.
struct HostArc : Zubia {
    using Zubia::Zubia;
    char more[200] = "host";
};

struct HostState : Egoera {
    explicit HostState(int* ended) : ended_(ended) {}
    ~HostState() override { ++*ended_; }
    int* ended_;
};

std::string numbered(std::size_t i) { return "symbol " + std::to_string(i); }

}  // namespace

TEST(BulkMemory, ObjectsKeepWhatIsWrittenIntoThem) {
    for (const std::size_t count : std::vector<std::size_t>{0, 1, 2, 817, 818, 819, 1635, 1636,
                                                            1637, 5000, 70000}) {
        Bulk<Zubia> bulk(count);
        std::vector<Zubia*> arcs;
        for (std::size_t i = 0; i < count; ++i) {
            arcs.push_back(bulk.make(static_cast<int>(i), numbered(i), "lower"));
        }
        std::mt19937 random(7);
        std::shuffle(arcs.begin(), arcs.end(), random);
        for (Zubia* arc : arcs) {
            const auto number = static_cast<std::size_t>(arc->hurrengo_egoera);
            ASSERT_EQ(arc->goiko_ikurra, numbered(number));
            delete arc;
        }
    }
}

TEST(BulkMemory, WhatIsNotTakenGoesWithTheRoom) {
    Zubia* last = nullptr;
    {
        Bulk<Zubia> bulk(3000);
        for (int i = 0; i < 1000; ++i) delete bulk.make(i, "a", "b");
        last = bulk.make(7, "a", "b");
    }
    EXPECT_EQ(last->hurrengo_egoera, 7);
    delete last;
}

TEST(BulkMemory, ATableTakesAHostsObjectsAndGivesItsOwnAway) {
    int ended = 0;
    std::unique_ptr<Zubia> kept;
    {
        const auto table = table_from("0\ta\t1\n1\tb\t2\nfinal: 2\n");
        auto& arcs = table->egoerak[0]->zubiak;
        kept.reset(arcs[0]);
        auto* const host = new HostArc(1, "x", "x");
        EXPECT_STREQ(host->more, "host");
        delete host;
        arcs[0] = new Zubia(1, "c", "c");
        table->egoerak[1]->addZubia(new (std::nothrow) Zubia(2, "d", "d"));
        delete table->egoerak[1]->zubiak[0];
        table->egoerak[1]->zubiak[0] = nullptr;
        table->addEgoera(new HostState(&ended));
        EXPECT_EQ(table->analizatuTokena("cd").size(), 1u);
        EXPECT_EQ(table->analizatuTokena("ab").size(), 0u);
    }
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(kept->goiko_ikurra, "a") << "it outlives its table";

    alignas(Zubia) char place[sizeof(Zubia)];
    Zubia* const placed = new (place) Zubia(3, "e", "e");
    EXPECT_EQ(placed->hurrengo_egoera, 3);
    placed->~Zubia();
    const std::unique_ptr<Zubia[]> several(new Zubia[3]);
    EXPECT_EQ(several[2].hurrengo_egoera, 0);
}

TEST(BulkMemoryThreads, ManyMayEndObjectsOfOneBlock) {
    Bulk<Zubia> bulk(8000);
    std::vector<std::vector<Zubia*>> shares(4);
    for (int i = 0; i < 8000; ++i) {
        shares[static_cast<std::size_t>(i % 4)].push_back(bulk.make(i, "a", numbered(3)));
    }
    lemara::test::in_threads(4, [&](unsigned number) {
        for (Zubia* arc : shares[number]) delete arc;
    });
}
