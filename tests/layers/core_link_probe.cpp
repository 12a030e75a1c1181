// A library made of nothing but the module's core: the objects of the static
// core library are all taken into it whole, so that it links only when the
// core's own link interface provides every symbol they use.
int KRVCoreLinkProbe()
{
    return 0;
}
