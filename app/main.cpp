#include "app/window/quill_app.h"

int main(int argc, char** argv) {
  return quillet::RunQuillet(argc, argv);
}
