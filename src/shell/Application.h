#pragma once

// Runs the application: reads the configuration, builds the services, starts
// the shell and the event loop. Answers the process's exit status.
int runApplication(int argc, char **argv);
