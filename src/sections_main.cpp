#include "RunProgram.h"
#include "sections/Form3.h"

int main() { return kelvane::RunProgram<kelvane::Form3>("kelvane-sections"); }
