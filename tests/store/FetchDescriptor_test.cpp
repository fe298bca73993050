// SPDX-License-Identifier: MIT
#include "store/FetchDescriptor.h"

#include <gtest/gtest.h>

#include "StoreTest.h"

namespace pillora {
namespace {

class FetchDescriptorTest : public StoreTest {
 protected:
  FetchDescriptorTest() {
    add("Zinc", 3, std::nullopt);
    add("Aspirin", 1, at("2025-02-01T00:00:00Z"));
    add("Melatonin", 3, std::nullopt);
    add("Biotin", 2, at("2025-03-01T00:00:00Z"));
    queue_.drain();
  }

  void add(const std::string& name, int64_t snoozes, std::optional<Instant> endDate) {
    const auto medicine = makeMedicine(name);
    medicine->maxSnoozeCount = snoozes;
    medicine->endDate = endDate;
    context_.insert(medicine);
  }
  Names fetched(const FetchDescriptor<Medicine>& descriptor) {
    auto found = context_.fetch(descriptor);
    EXPECT_TRUE(found);
    const auto count = context_.fetchCount(descriptor);
    EXPECT_TRUE(count && found && *count == static_cast<int64_t>(found->size()));
    return found ? namesOf(*found) : Names();
  }

  std::unique_ptr<ModelContainer> container_ = openInMemory();
  ModelContext& context_ = container_->mainContext();
};

TEST_F(FetchDescriptorTest, withoutASortRecordsComeInTheOrderOfTheirInsertion) {
  EXPECT_EQ(fetched({}), (Names{"Zinc", "Aspirin", "Melatonin", "Biotin"}));
}

TEST_F(FetchDescriptorTest, aChangedRecordKeepsItsPlace) {
  all<Medicine>(context_).front()->name = "Zinc plus";
  EXPECT_EQ(fetched({}), (Names{"Zinc plus", "Aspirin", "Melatonin", "Biotin"}));
}

TEST_F(FetchDescriptorTest, equalsKeepTheOrderOfTheirInsertionInBothDirections) {
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().sortedBy(&Medicine::maxSnoozeCount)),
            (Names{"Aspirin", "Biotin", "Zinc", "Melatonin"}));
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().sortedBy(&Medicine::maxSnoozeCount, SortOrder::descending)),
            (Names{"Zinc", "Melatonin", "Biotin", "Aspirin"}));
}

TEST_F(FetchDescriptorTest, conditionsAreJoinedByAnd) {
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>()
                        .where(&Medicine::maxSnoozeCount, Comparison::atLeast, int64_t{2})
                        .where(&Medicine::maxSnoozeCount, Comparison::lessThan, int64_t{3})),
            Names{"Biotin"});
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().where(&Medicine::name, Comparison::equal, std::string("Zinc"))),
            Names{"Zinc"});
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().where(&Medicine::isActive, Comparison::equal, false)), Names{});
}

TEST_F(FetchDescriptorTest, absentEqualsAbsentAndIsNeitherMoreNorLess) {
  const std::optional<Instant> absent;
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().where(&Medicine::endDate, Comparison::equal, absent)),
            (Names{"Zinc", "Melatonin"}));
  const std::optional<Instant> march = at("2025-03-01T00:00:00Z");
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().where(&Medicine::endDate, Comparison::lessThan, march)),
            Names{"Aspirin"});
}

TEST_F(FetchDescriptorTest, aLimitTakesTheFirstOfTheOrder) {
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().sortedBy(&Medicine::name).limitedTo(2)), (Names{"Aspirin", "Biotin"}));
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().limitedTo(0)), Names{});
}

TEST_F(FetchDescriptorTest, aTextWithQuotesIsAValueAndNothingElse) {
  EXPECT_EQ(fetched(FetchDescriptor<Medicine>().where(&Medicine::name, Comparison::equal,
                                                      std::string("'; DROP TABLE Medicine; --"))),
            Names{});
  EXPECT_EQ(fetched({}).size(), 4U);
}

}  // namespace
}  // namespace pillora
