// SPDX-License-Identifier: MIT
// Drives the real agent through a simulated year of faults and prints what became of every request:
//
//     agent-campaign [REQUESTS [DAYS [SEED]]]        10000 365 1 by default
//
// It ends with status 1 when a request was lost, doubled, early, late or shown uncalled for.
#include <cstdio>
#include <cstdlib>

#include "agent/Campaign.h"

int main(int count, char** arguments) {
  const auto number = [&](int place, long otherwise) {
    return count > place ? std::strtol(arguments[place], nullptr, 10) : otherwise;
  };
  const long requests = number(1, 10'000);
  const auto days = static_cast<int>(number(2, 365));
  pillora::Campaign campaign(static_cast<uint32_t>(number(3, 1)), requests, days);
  const pillora::CampaignCounts counts = campaign.run();
  std::fputs(counts.text().c_str(), stdout);
  return counts.faults() == 0 && counts.added == requests ? 0 : 1;
}
