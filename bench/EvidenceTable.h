// Prints how well the second look judges.
#ifndef ZELVREG_BENCH_EVIDENCE_TABLE_H
#define ZELVREG_BENCH_EVIDENCE_TABLE_H

#include <ostream>

#include "EvidenceBench.h"

namespace zelvreg::bench {

// A table by kind code, what was judged wrongly, and the goals with whether they are met.
void printEvidence(std::ostream& output, const EvidenceFigures& figures);

// What the second look costs, in hundredths of the scan without it.
void printCost(std::ostream& output, const Comparison& scans);

}  // namespace zelvreg::bench

#endif
