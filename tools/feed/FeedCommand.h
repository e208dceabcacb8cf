#pragma once

// trekmime-feed's command line: the configuration as trekmime-ctl reads it,
// where to listen, and --once. Exit statuses: 0 served (or --once with a
// position), 1 --once without a position, 2 bad arguments or configuration.
int runFeed(int argc, char **argv);
