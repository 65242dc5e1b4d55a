// Ends at once: what is left of starting it is the start itself.
int main() {
    return 0;
}
