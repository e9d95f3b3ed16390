// What each planning step shows on its progress display, and logs.
#pragma once

class PlannerProgress;

// "Calculating collision map": i of N samples done, E edges; true when cancelled.
bool showSampleProgress(PlannerProgress& progress, int samplesDone, int sampleTotal, long long edgeCount);
// The n-th failed attempt of one search for a free configuration (with a
// warning from the 101st on); true when cancelled.
bool showAttempt(PlannerProgress& progress, int attemptNumber);
// "Connecting robot position": candidate i of n tried, E edges made; true when cancelled.
bool showConnectProgress(PlannerProgress& progress, int candidate, int candidateTotal, int edgeCount);
