// 検索語を数える回路。don't synthesise it
`timescale 1ns / 1ps
`include "defs.vh"

/* A block comment:
   always @(posedge clk) begin "open" it's */
module hit_counter #(
    parameter int WIDTH = 8
) (
    input  logic             clk,
    input  logic             rst_n,
    input  wire [WIDTH-1:0]  data,
    output reg  [15:0]       total
);
    localparam logic [7:0] WORD = 8'hA5;
    typedef enum logic [1:0] {IDLE, FOUND} state_t;
    state_t state;

    always_ff @(posedge clk or negedge rst_n) begin
        if (!rst_n) begin
            total <= '0; // "quoted" end
            state <= IDLE;
        end else if (data == WORD) begin
            total <= total + 16'd1;
            $display("件数 // %0d at %t", total, $time);
        end
    end

    assign found = (state == FOUND) ? 1'b1 : 1'bz;
    wire ending = forked;
endmodule
