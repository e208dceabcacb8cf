#include "FeedCommand.h"

int main(int argc, char **argv)
{
    return runFeed(argc, argv);
}
