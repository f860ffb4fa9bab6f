#include "RunProgram.h"
#include "workspace/Form1.h"

int main() { return kelvane::RunProgram<kelvane::Form1>("kelvane"); }
