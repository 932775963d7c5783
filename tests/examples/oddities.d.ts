// Made by krhost --describe=ts. Scripts run in no browser, so compile them with
// --lib es5 or the like, without the declarations of one.

/**
 * Odd /* *\/ class
 *
 * Line one
 * line two
 * @example
 * a(); /* b *\/
 *
 * c();
 */
declare class Odd {
    /** @param first (default 1) */
    constructor(first: number | undefined, second: string);
    /**
     * Ends *\/ here
     *
     * and "there"
     */
    readonly "two words": number;
    "quote\"\\\u000a": string;
    /** (default "NaN") */
    "größe": number;
    delete(this_: number, this__: boolean, class_: any, _2nd: any, a_b: number, arg6: any): void;
    // "constructor" is left out: every class has its own.
    // "==" is left out: TypeScript has no operators of classes.
    readonly state: { (...more: Array<Odd>): Odd; valueOf(): number[]; };
    unknown: any;
    nested(___early: number, when: Date, f: Function | null | undefined, o: object): any[][];
    rows(): any;
    length: number;
    [index: number]: any;
}

// "delete" is left out: a class cannot have this name.

// "/\u2028a" is left out: a class cannot have this name.
