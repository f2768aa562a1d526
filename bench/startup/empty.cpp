// A program that does nothing: what its start and end cost.
int main() {}
