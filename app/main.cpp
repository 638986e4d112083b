#include "app/Launch.h"

int main(int argc, char** argv) { return tarnwick::launch(argc, argv); }
